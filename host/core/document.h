// document.h: open drawings. What each subsystem keeps for a drawing hangs on its document.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace host
{

class document
{
public:
    explicit document(int number);
    ~document();
    document(const document&) = delete;
    document& operator=(const document&) = delete;

    // 1, 2, ... in the order of opening; never used twice in a run.
    int number() const { return number_; }

    // The part of type T, made (from this document) when it is first asked for. Parts go with the
    // document, the newest first.
    template <class T>
    T& part()
    {
        for (auto& held : parts_)
            if (held->key() == part_of<T>::type_key())
                return static_cast<part_of<T>&>(*held).value;
        parts_.push_back(std::make_unique<part_of<T>>(*this));
        return static_cast<part_of<T>&>(*parts_.back()).value;
    }

    // Path as the drawing was named, in the host's own form (a path of this file system); empty for a
    // drawing that was never saved.
    std::string file;
    // The same as it was named by whoever opened or saved it, in any path form; what programs see as the
    // drawing's directory follows this. Empty: as `file`.
    std::string named;

private:
    struct slot {
        virtual ~slot() = default;
        virtual const void* key() const = 0;
    };
    template <class T>
    struct part_of : slot {
        T value;
        explicit part_of(document& owner) : value(owner) {}
        static const void* type_key()
        {
            static const char mark = 0;
            return &mark;
        }
        const void* key() const override { return type_key(); }
    };

    int number_;
    std::vector<std::unique_ptr<slot>> parts_;
};

// The drawings that are open, oldest first, and the current one. There is always a current
// drawing while the host runs. No reactor hears of what is done here: drawings that a user sees opened,
// closed or brought to the front go through host/commandline/open_drawings.h.
const std::vector<std::unique_ptr<document>>& documents();
document& current_document();
bool has_document();
document& open_document();          // a new, empty one, which becomes current
void close_document(document& doc); // its parts go; another becomes current if there is one
void make_current(document& doc);
void close_all_documents();
document* document_of_number(int number); // null: it is open no more
// Of those that are open now, for a walk in which drawings may come and go.
std::vector<int> document_numbers();

// Makes a drawing current for a while. At its end the one before is current again, unless it has been
// closed or another one was brought to the front in between.
class while_current
{
public:
    explicit while_current(document& doc);
    ~while_current();
    while_current(const while_current&) = delete;
    while_current& operator=(const while_current&) = delete;

private:
    int before_, during_;
};

} // namespace host
