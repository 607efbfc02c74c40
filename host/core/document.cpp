// document.cpp: the list of open drawings.
#include "host/core/document.h"

#include <algorithm>

namespace host
{

namespace
{

struct open_documents {
    std::vector<std::unique_ptr<document>> all;
    document* current = nullptr;
    int last_number = 0;
};
open_documents& open_ones()
{
    static open_documents list;
    return list;
}

} // namespace

document::document(int number) : number_(number) {}

document::~document()
{
    while (!parts_.empty())
        parts_.pop_back();
}

const std::vector<std::unique_ptr<document>>& documents()
{
    return open_ones().all;
}
document& current_document()
{
    return *open_ones().current;
}
bool has_document()
{
    return open_ones().current != nullptr;
}

document& open_document()
{
    open_documents& list = open_ones();
    list.all.push_back(std::make_unique<document>(++list.last_number));
    make_current(*list.all.back());
    return *list.all.back();
}

void make_current(document& doc)
{
    open_ones().current = &doc;
}

void close_document(document& doc)
{
    open_documents& list = open_ones();
    const auto place =
        std::find_if(list.all.begin(), list.all.end(), [&](const auto& d) { return d.get() == &doc; });
    if (place == list.all.end())
        return;
    const std::unique_ptr<document> leaving = std::move(*place);
    list.all.erase(place);
    if (list.current == &doc)
        list.current = list.all.empty() ? nullptr : list.all.back().get();
}

document* document_of_number(int number)
{
    for (const auto& doc : documents())
        if (doc->number() == number)
            return doc.get();
    return nullptr;
}

std::vector<int> document_numbers()
{
    std::vector<int> numbers;
    for (const auto& doc : documents())
        numbers.push_back(doc->number());
    return numbers;
}

while_current::while_current(document& doc)
    : before_(has_document() ? current_document().number() : 0), during_(doc.number())
{
    make_current(doc);
}

while_current::~while_current()
{
    if (!has_document() || current_document().number() != during_)
        return;
    if (document* before = document_of_number(before_))
        make_current(*before);
}

void close_all_documents()
{
    while (!open_ones().all.empty())
        close_document(*open_ones().all.back());
}

} // namespace host
