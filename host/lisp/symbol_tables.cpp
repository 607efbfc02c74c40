// symbol_tables.cpp: layers, linetypes, blocks and the other tables by name.
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"

namespace host::lisp
{

namespace
{

value record(interpreter& l, resbuf* groups)
{
    const list_ptr held(groups);
    return groups ? value_of_groups(l, groups) : value::nil();
}

value search(interpreter& l, arguments a)
{
    return record(l, acdbTblSearch(a.text(0).c_str(), a.text(1).c_str(), a.given(2)));
}

value next(interpreter& l, arguments a)
{
    return record(l, acdbTblNext(a.text(0).c_str(), a.given(1)));
}

value object_name(interpreter&, arguments a)
{
    ads_name name = {0, 0};
    if (acdbTblObjName(a.text(0).c_str(), a.text(1).c_str(), name) != RTNORM)
        return value::nil();
    return value::entity(name);
}

// Whether a text may be a record's name; a bar is allowed where the second argument isn't 0.
value valid_name(interpreter& l, arguments a)
{
    const std::string& name = a.text(0);
    const bool bar = a.count > 1 && a.integer(1) != 0;
    const bool bad = name.empty() || name.size() > 255 || name.find_first_of("<>/\\\":;?*,=`") != name.npos ||
                     name.front() == ' ' || name.back() == ' ' || (!bar && name.find('|') != name.npos);
    return l.truth(!bad);
}

constexpr builtin TABLE[] = {
    {"tblsearch", search, 2, 3, "ss."},
    {"tblnext", next, 1, 2, "s."},
    {"tblobjname", object_name, 2, 2, "s"},
    {"snvalid", valid_name, 1, 2, "si"},
};

} // namespace

std::span<const builtin> symbol_table_table()
{
    return TABLE;
}

} // namespace host::lisp
