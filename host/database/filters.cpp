// Selection filters: a list of groups that an object must have, with -4 operators between them.
//
// A filter is read from left to right by a small recursive descent; the same walk without an object checks
// that it is well formed. Groups that an object may leave out are tested as if they had their standard value.
#include <cmath>
#include <cstdio>
#include <optional>

#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/kinds.h"

namespace host::db
{

namespace
{

// Reals and coordinates this close are equal: coordinates that went through a text with eight places.
constexpr double SAME = 1e-8;
constexpr int DEEPEST = 100; // nesting of operators

bool equal(double a, double b)
{
    return std::fabs(a - b) <= SAME;
}

enum class test : std::uint8_t {
    any,
    equal,
    unequal,
    less,
    at_most,
    greater,
    at_least,
    bits_any,
    bits_all,
    none
};

struct test_name {
    std::string_view text;
    test means;
};

constexpr test_name TESTS[] = {
    {"*", test::any},       {"=", test::equal},    {"!=", test::unequal},  {"/=", test::unequal},
    {"<>", test::unequal},  {"<", test::less},     {"<=", test::at_most},  {">", test::greater},
    {">=", test::at_least}, {"&", test::bits_any}, {"&=", test::bits_all},
};

test test_of(std::string_view text)
{
    for (const test_name& each : TESTS)
        if (each.text == text)
            return each.means;
    return test::none;
}

template <class Number>
bool holds(test how, Number have, Number want)
{
    switch (how) {
    case test::any:
        return true;
    case test::less:
        return have < want && !equal(static_cast<double>(have), static_cast<double>(want));
    case test::at_most:
        return have < want || equal(static_cast<double>(have), static_cast<double>(want));
    case test::greater:
        return have > want && !equal(static_cast<double>(have), static_cast<double>(want));
    case test::at_least:
        return have > want || equal(static_cast<double>(have), static_cast<double>(want));
    case test::unequal:
        return !equal(static_cast<double>(have), static_cast<double>(want));
    default:
        return equal(static_cast<double>(have), static_cast<double>(want));
    }
}

bool holds_bits(test how, std::int64_t have, std::int64_t want)
{
    return how == test::bits_any ? (have & want) != 0 : (have & want) == want;
}

// A relation as it stands in -4: one test, or up to three with commas between them.
struct relation {
    test tests[3] = {test::equal, test::any, test::any};
    int count = 0; // 0: none given, plain equality
    bool valid = true;
};

relation relation_of(std::string_view text)
{
    relation made;
    while (made.count < 3) {
        const std::size_t comma = text.find(',');
        const test each = test_of(trimmed(text.substr(0, comma)));
        made.valid = made.valid && each != test::none;
        made.tests[made.count++] = each;
        if (comma == std::string_view::npos)
            return made;
        text.remove_prefix(comma + 1);
    }
    made.valid = false;
    return made;
}

// Names are compared without regard to case, texts that a person wrote as they are.
bool is_name_code(int code)
{
    return code != 1 && code != 4 && code < 300 ? true : code == 410 || code == 1001 || code == 1003;
}

bool text_fits(const relation& how, int code, std::string have, std::string want)
{
    if (is_name_code(code)) {
        have = upper(have);
        want = upper(want);
    }
    if (how.count == 0 || how.tests[0] == test::equal)
        return acutWcMatch(have.c_str(), want.c_str()) == RTNORM;
    if (how.tests[0] == test::unequal)
        return acutWcMatch(have.c_str(), want.c_str()) != RTNORM;
    if (how.tests[0] == test::any)
        return true;
    return holds(how.tests[0], have.compare(want), 0);
}

bool point_fits(const relation& how, const group& have, const double* want)
{
    const int dimensions = have.dimensions;
    const auto same = [&](int i) { return equal(have.point[i], want[i]); };
    const bool all = same(0) && same(1) && (dimensions < 3 || same(2));
    if (how.count == 0 || (how.count == 1 && how.tests[0] == test::equal))
        return all;
    if (how.count == 1 && how.tests[0] == test::unequal)
        return !all;
    for (int i = 0; i < how.count && i < dimensions; ++i)
        if (!holds(how.tests[i], have.point[i], want[i]))
            return false;
    return true;
}

std::string handle_text(std::uint64_t handle)
{
    char text[20];
    std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
    return text;
}

bool group_fits(const database& db, const relation& how, const group& have, const resbuf& want)
{
    const bool bits = how.count && (how.tests[0] == test::bits_any || how.tests[0] == test::bits_all);
    switch (type_of_code(want.restype)) {
    case value_type::real:
        return have.kind == group_kind::real && !bits && holds(how.tests[0], have.real, want.resval.rreal);
    case value_type::int16:
    case value_type::int32: {
        const std::int64_t value = type_of_code(want.restype) == value_type::int16
                                       ? std::int64_t{want.resval.rint}
                                       : std::int64_t{want.resval.rlong};
        if (have.kind != group_kind::integer)
            return false;
        return bits ? holds_bits(how.tests[0], have.integer, value) : holds(how.tests[0], have.integer, value);
    }
    case value_type::point:
        return have.kind == group_kind::point && !bits && point_fits(how, have, want.resval.rpoint);
    case value_type::text:
        if (bits || !want.resval.rstring)
            return false;
        return text_fits(how, want.restype,
                         have.kind == group_kind::handle ? handle_text(have.handle)
                                                         : std::string(db.text(have.text)),
                         want.resval.rstring);
    case value_type::name: {
        const object_id id = id_of_name(db, want.resval.rlname);
        const bool same = have.kind == group_kind::handle && id && db.at(id).handle == have.handle;
        return how.count && how.tests[0] == test::unequal ? !same : same;
    }
    default:
        return false;
    }
}

// What a group that an object leaves out stands for: what its kind has, or what any entity has.
std::optional<group> missing_group(const database& db, object_id id, int code)
{
    if (db.at(id).family != object_class::entity)
        return std::nullopt;
    if (const std::optional<group> of_kind = standard_group(db, db.at(id).groups, code))
        return of_kind;
    switch (code) {
    case 62:
        return int_group(62, 256);
    case 60:
    case 66:
        return int_group(code, 0);
    case 370:
        return int_group(370, -1);
    case 38:
    case 39:
        return real_group(code, 0.0);
    case 48:
        return real_group(48, 1.0);
    case 67: {
        const object_id block = block_of(db, id);
        return int_group(67, block && block != db.model_space() && is_space(db, block) ? 1 : 0);
    }
    case 210:
        return point_group(210, 0, 0, 1);
    default:
        return std::nullopt;
    }
}

bool name_of_missing(const database& db, object_id id, int code, std::string& out)
{
    if (code == 6)
        out = "BYLAYER";
    else if (code == 410)
        out = layout_name(db, block_of(db, id));
    return code == 6 || (code == 410 && !out.empty());
}

bool object_fits(const database& db, object_id id, const relation& how, const resbuf& want)
{
    if (how.count && how.tests[0] == test::any && how.count == 1)
        return true;
    if (want.restype == -1)
        return id_of_name(db, want.resval.rlname) == id;
    bool found = false;
    const int code = want.restype == RTDXF0 ? 0 : want.restype;
    for (const group& each : db.at(id).groups) {
        if (each.code >= 1000)
            break;
        if (each.code != code)
            continue;
        found = true;
        if (group_fits(db, how, each, want))
            return true;
    }
    if (found)
        return false;
    std::string name;
    if (name_of_missing(db, id, code, name))
        return want.resval.rstring && text_fits(how, code, name, want.resval.rstring);
    const std::optional<group> standard = missing_group(db, id, code);
    return standard && group_fits(db, how, *standard, want);
}

bool has_application(const database& db, object_id id, const char* pattern)
{
    const std::string wanted = upper(pattern);
    for (const group& each : db.at(id).groups)
        if (each.code == 1001 && acutWcMatch(upper(db.text(each.text)).c_str(), wanted.c_str()) == RTNORM)
            return true;
    return false;
}

// The walk. Without a database the filter is only checked.
class filter_walk
{
public:
    filter_walk(const database* db, object_id id, const resbuf* at) : db_(db), id_(id), at_(at) {}

    bool all(bool& result)
    {
        result = true;
        while (at_) {
            bool one = false;
            if (closing(at_) || !test_one(one, 0))
                return false;
            result = result && one;
        }
        return true;
    }

private:
    static std::string operator_of(const resbuf* node)
    {
        if (node->restype != -4 || !node->resval.rstring)
            return {};
        return upper(trimmed(node->resval.rstring));
    }
    // "<AND" and "AND>", where "<,*" and "*,>" are relations.
    static bool opens(const std::string& word)
    {
        return word.size() > 1 && word[0] == '<' && is_letter(word[1]);
    }
    static bool closing(const resbuf* node)
    {
        const std::string word = operator_of(node);
        return word.size() > 1 && word.back() == '>' && is_letter(word[0]);
    }
    static bool is_letter(char c) { return c >= 'A' && c <= 'Z'; }

    // One test or one group of tests; false: not well formed.
    bool test_one(bool& result, int depth)
    {
        if (at_->restype == -3)
            return test_applications(result);
        if (at_->restype != -4) {
            result = test_group(relation{}, *at_);
            return well_formed_group() && advance();
        }
        const std::string word = operator_of(at_);
        if (opens(word))
            return test_operator(word.substr(1), result, depth);
        const relation how = relation_of(word);
        at_ = at_->rbnext;
        if (!how.valid || !at_ || at_->restype < 0 || !well_formed_group())
            return false;
        result = test_group(how, *at_);
        return advance();
    }

    bool well_formed_group() const
    {
        const value_type type = type_of_code(at_->restype);
        if (at_->restype >= 5000 && at_->restype != RTDXF0)
            return false;
        return type != value_type::none && (type != value_type::text || at_->resval.rstring);
    }
    bool advance()
    {
        at_ = at_->rbnext;
        return true;
    }
    bool test_group(const relation& how, const resbuf& want) const
    {
        return db_ && well_formed_group() && object_fits(*db_, id_, how, want);
    }

    bool test_operator(const std::string& name, bool& result, int depth)
    {
        const bool known = name == "AND" || name == "OR" || name == "NOT" || name == "XOR";
        if (!known || depth >= DEEPEST)
            return false;
        at_ = at_->rbnext;
        int count = 0, fitting = 0;
        while (at_ && !closing(at_)) {
            bool one = false;
            if (!test_one(one, depth + 1))
                return false;
            ++count;
            fitting += one ? 1 : 0;
        }
        if (!at_ || operator_of(at_) != name + '>')
            return false;
        at_ = at_->rbnext;
        if (name == "NOT") {
            result = fitting == 0;
            return count == 1;
        }
        if (name == "XOR") {
            result = fitting == 1;
            return count == 2;
        }
        result = name == "AND" ? fitting == count : fitting > 0;
        return count > 0;
    }

    // -3 and the names behind it, as 1001 or as bare texts, in parentheses or not. All must be there.
    bool test_applications(bool& result)
    {
        result = true;
        at_ = at_->rbnext;
        int count = 0;
        while (at_ && (at_->restype == RTLB || at_->restype == RTLE || at_->restype == 1001 ||
                       at_->restype == RTSTR)) {
            if (at_->restype == 1001 || at_->restype == RTSTR) {
                if (!at_->resval.rstring)
                    return false;
                ++count;
                result = result && db_ && has_application(*db_, id_, at_->resval.rstring);
            }
            at_ = at_->rbnext;
        }
        return count > 0;
    }

    const database* db_;
    object_id id_;
    const resbuf* at_;
};

} // namespace

bool matches(const database& db, object_id id, const resbuf* filter)
{
    bool result = false;
    return db.valid(id) && filter_walk(&db, id, filter).all(result) && result;
}

bool is_valid_filter(const resbuf* filter)
{
    bool result = false;
    return filter_walk(nullptr, 0, filter).all(result);
}

} // namespace host::db
