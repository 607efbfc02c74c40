// value.h: AutoLISP values. Numbers and entity names lie in the value itself; the rest is counted.
// Cells can't be changed once made, so there are no circles and a count is enough.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace host::lisp
{

class interpreter;
struct symbol;
struct builtin;
struct special_form;

enum class kind : std::uint8_t {
    unset, // a symbol that was never given a value; reads as nil
    nil,
    integer,
    real,
    entity,
    symbol,
    builtin,
    special,
    external, // a module's function, by its symbol
    // counted from here on
    string,
    cell,
    function,
    file,
    pickset,
    caught, // what vl-catch-all-apply gives for an error
};

struct counted {
    std::uint32_t references = 0;
    kind type;
    explicit counted(kind k) : type(k) {}
};

// Takes apart an object that nothing refers to any more, whatever hangs on it too, without recursion.
void release(counted* object);

struct cell;
struct string_object;
struct function_object;
struct file_object;
struct pickset_object;
struct caught_object;

class value
{
public:
    value() : type_(kind::unset), real_(0) {}
    value(const value& other) : type_(other.type_), real_(0)
    {
        copy_payload(other);
        if (is_counted())
            ++object_->references;
    }
    value(value&& other) noexcept : type_(other.type_), real_(0)
    {
        copy_payload(other);
        other.type_ = kind::unset;
    }
    value& operator=(const value& other)
    {
        value copy(other);
        swap(copy);
        return *this;
    }
    value& operator=(value&& other) noexcept
    {
        value taken(std::move(other));
        swap(taken);
        return *this;
    }
    ~value()
    {
        if (is_counted() && --object_->references == 0)
            release(object_);
    }
    void swap(value& other) noexcept
    {
        std::swap(type_, other.type_);
        std::swap(real_bits_, other.real_bits_);
    }

    static value nil() { return value(kind::nil); }
    static value integer(std::int32_t number)
    {
        value v(kind::integer);
        v.integer_ = number;
        return v;
    }
    static value real(double number)
    {
        value v(kind::real);
        v.real_ = number;
        return v;
    }
    static value entity(const std::int32_t* name)
    {
        value v(kind::entity);
        v.name_[0] = name[0];
        v.name_[1] = name[1];
        return v;
    }
    static value of(symbol* s)
    {
        value v(kind::symbol);
        v.symbol_ = s;
        return v;
    }
    static value external(symbol* s)
    {
        value v(kind::external);
        v.symbol_ = s;
        return v;
    }
    static value of(const builtin* b)
    {
        value v(kind::builtin);
        v.builtin_ = b;
        return v;
    }
    static value of(const special_form* s)
    {
        value v(kind::special);
        v.special_ = s;
        return v;
    }
    static value of(counted* object)
    {
        value v(object->type);
        v.object_ = object;
        ++object->references;
        return v;
    }
    static value text(std::string_view bytes);

    kind type() const { return type_; }
    bool is(kind k) const { return type_ == k; }
    bool is_nil() const { return type_ <= kind::nil; }
    bool is_true() const { return type_ > kind::nil; }
    bool is_cell() const { return type_ == kind::cell; }
    bool is_list() const { return is_nil() || is_cell(); }
    bool is_number() const { return type_ == kind::integer || type_ == kind::real; }
    bool is_string() const { return type_ == kind::string; }
    bool is_counted() const { return type_ >= kind::string; }

    std::int32_t as_integer() const { return integer_; }
    double as_real() const { return real_; }
    double number() const { return type_ == kind::integer ? integer_ : real_; }
    const std::int32_t* name() const { return name_; }
    symbol* as_symbol() const { return symbol_; }
    const builtin* as_builtin() const { return builtin_; }
    const special_form* as_special() const { return special_; }
    counted* object() const { return object_; }

    inline const lisp::cell* as_cell() const;
    inline const std::string& as_string() const;
    inline function_object* as_function() const;
    inline file_object* as_file() const;
    inline pickset_object* as_pickset() const;
    inline const caught_object* as_caught() const;

    // First and rest of a list; nil for nil. Not to be asked of anything else.
    inline const value& car() const;
    inline const value& cdr() const;

private:
    explicit value(kind k) : type_(k), real_(0) {}
    void copy_payload(const value& other) { real_bits_ = other.real_bits_; }

    kind type_;
    union {
        std::int32_t integer_;
        double real_;
        std::int32_t name_[2];
        symbol* symbol_;
        const builtin* builtin_;
        const special_form* special_;
        counted* object_;
        std::uint64_t real_bits_;
    };
};
static_assert(sizeof(value) == 16);

struct symbol {
    std::string name; // as printed: upper case
    value bound;
};

struct cell : counted {
    std::uint32_t line = 0; // of the text that it was read from; 0 for cells made by programs
    value first, rest;
    cell(value a, value d) : counted(kind::cell), first(std::move(a)), rest(std::move(d)) {}
};

struct string_object : counted {
    std::string text;
    explicit string_object(std::string_view bytes) : counted(kind::string), text(bytes) {}
};

const value& nil_value();

const cell* value::as_cell() const
{
    return static_cast<const lisp::cell*>(object_);
}
const std::string& value::as_string() const
{
    return static_cast<const string_object*>(object_)->text;
}
const value& value::car() const
{
    return is_cell() ? as_cell()->first : nil_value();
}
const value& value::cdr() const
{
    return is_cell() ? as_cell()->rest : nil_value();
}

inline value cons(value first, value rest)
{
    return value::of(new cell(std::move(first), std::move(rest)));
}

// A list that grows at its end.
class list_maker
{
public:
    void add(value item)
    {
        cell* made = new cell(std::move(item), value::nil());
        if (last_)
            last_->rest = value::of(made);
        else
            head_ = value::of(made);
        last_ = made;
    }
    // Closes the list with something else than nil; nothing may be added behind it.
    void end_with(value rest)
    {
        if (last_)
            last_->rest = std::move(rest);
        else
            head_ = std::move(rest);
    }
    cell* last() const { return last_; }
    value take()
    {
        last_ = nullptr;
        return std::exchange(head_, value::nil());
    }

private:
    value head_ = value::nil();
    cell* last_ = nullptr;
};

// The same object, number or text.
bool same(const value& a, const value& b);
// The same in structure; numbers may differ by `fuzz`.
bool equal(const value& a, const value& b, double fuzz = 0);

} // namespace host::lisp
