// sysvars.cpp: reading and setting variables by the rows of the table.
#include "host/database/sysvars.h"

#include <charconv>
#include <map>
#include <string>
#include <unordered_map>

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/database.h"
#include "host/database/sysvars_table.h"

namespace host::db
{

namespace
{

struct stored_value {
    double number[3] = {0, 0, 0};
    std::string text;
};

// The values that a drawing or the session has been given; what isn't here has its initial value.
struct value_store {
    std::map<const variable_row*, stored_value> values;
};
struct drawing_values : value_store {
    explicit drawing_values(document&) {}
};

value_store& store_of(document& doc, const variable_row& row)
{
    static value_store session;
    return row.home == variable_home::session ? session : doc.part<drawing_values>();
}

const variable_row* find_row(std::string_view name)
{
    static const auto rows = [] {
        std::unordered_map<std::string_view, const variable_row*> made;
        for (const variable_row& row : variable_rows())
            made.emplace(row.name, &row);
        return made;
    }();
    const auto found = rows.find(upper(name));
    return found == rows.end() ? nullptr : found->second;
}

stored_value initial_value(const variable_row& row)
{
    stored_value made;
    if (row.form == variable_form::text) {
        made.text = row.initial;
        return made;
    }
    std::string_view rest = row.initial;
    for (double& number : made.number) {
        const std::size_t comma = rest.find(',');
        const std::string_view part = rest.substr(0, comma);
        std::from_chars(part.data(), part.data() + part.size(), number);
        if (comma == std::string_view::npos)
            break;
        rest.remove_prefix(comma + 1);
    }
    return made;
}

// Files of any age hold a variable under more than one group code: the value counts, not the code.
stored_value value_of_group(const database& db, const group& from)
{
    stored_value made;
    switch (kind_of_code(from.code)) {
    case group_kind::real:
        made.number[0] = from.real;
        break;
    case group_kind::integer:
        made.number[0] = static_cast<double>(from.integer);
        break;
    case group_kind::point:
        for (int i = 0; i < 3; ++i)
            made.number[i] = from.point[i];
        break;
    case group_kind::text:
        made.text = db.text(from.text);
        break;
    default:
        break;
    }
    return made;
}

std::string header_name(const variable_row& row)
{
    // The menu's name is the one variable that files know by another name.
    return row.name == "MENUNAME" ? "$MENU" : "$" + std::string(row.name);
}

stored_value current_value(document& doc, const variable_row& row)
{
    if (row.home == variable_home::header) {
        const database& db = database_of(doc);
        const group_list* held = db.header_value(header_name(row));
        return held && !held->empty() ? value_of_group(db, held->front()) : initial_value(row);
    }
    const value_store& store = store_of(doc, row);
    const auto found = store.values.find(&row);
    return found == store.values.end() ? initial_value(row) : found->second;
}

void put_value(document& doc, const variable_row& row, const stored_value& value)
{
    if (row.home != variable_home::header) {
        store_of(doc, row).values[&row] = value;
        return;
    }
    database& db = database_of(doc);
    const double* at = value.number;
    group made;
    switch (row.form) {
    case variable_form::text:
        made = db.text_group(row.group, value.text);
        break;
    case variable_form::real:
        made = real_group(row.group, at[0]);
        break;
    case variable_form::point2:
        made = point_group(row.group, at[0], at[1]);
        break;
    case variable_form::point3:
        made = point_group(row.group, at[0], at[1], at[2]);
        break;
    default:
        made = int_group(row.group, static_cast<std::int64_t>(at[0]));
        break;
    }
    db.set_header(header_name(row), {made});
}

resbuf* node_of(const variable_row& row, const stored_value& value)
{
    switch (row.form) {
    case variable_form::integer:
        return rb_int(RTSHORT, static_cast<int>(value.number[0]));
    case variable_form::long_integer:
        return rb_int(RTLONG, static_cast<int>(value.number[0]));
    case variable_form::real:
        return rb_real(RTREAL, value.number[0]);
    case variable_form::text:
        return rb_text(RTSTR, value.text);
    case variable_form::point2:
        return rb_point(RTPOINT, value.number);
    case variable_form::point3:
        return rb_point(RT3DPOINT, value.number);
    }
    return nullptr;
}

// False when the node is of another type. Whole numbers do for reals, 2D points for 3D ones.
bool value_of_node(const variable_row& row, const resbuf& node, stored_value* value)
{
    const value_type type = type_of_code(node.restype);
    const bool is_point = type == value_type::point;
    const bool is_whole = type == value_type::int16 || type == value_type::int32;
    if (is_whole)
        value->number[0] = type == value_type::int16 ? node.resval.rint : node.resval.rlong;
    if (type == value_type::real)
        value->number[0] = node.resval.rreal;
    if (is_point)
        for (int i = 0; i < (node.restype == RTPOINT ? 2 : 3); ++i)
            value->number[i] = node.resval.rpoint[i];
    if (type == value_type::text && node.resval.rstring)
        value->text = node.resval.rstring;
    switch (row.form) {
    case variable_form::integer:
    case variable_form::long_integer:
        return is_whole;
    case variable_form::real:
        return is_whole || type == value_type::real;
    case variable_form::text:
        return type == value_type::text && node.resval.rstring;
    case variable_form::point2:
    case variable_form::point3:
        return is_point;
    }
    return false;
}

const variable_row* storable_row(std::string_view name)
{
    const variable_row* row = find_row(name);
    return row && row->home != variable_home::worked_out ? row : nullptr;
}

} // namespace

list_ptr get_variable(document& doc, std::string_view name)
{
    const variable_row* row = find_row(name);
    if (!row)
        return nullptr;
    return row->get ? row->get(doc) : list_ptr(node_of(*row, current_value(doc, *row)));
}

set_result set_variable(document& doc, std::string_view name, const resbuf& value)
{
    const variable_row* row = find_row(name);
    if (!row)
        return set_result::unknown;
    if (row->read_only)
        return set_result::read_only;
    stored_value wanted;
    if (!value_of_node(*row, value, &wanted))
        return set_result::wrong_type;
    if (row->low < row->high && !(wanted.number[0] >= row->low && wanted.number[0] <= row->high))
        return set_result::out_of_range;
    if (row->set)
        return row->set(doc, value);
    if (row->dot_empties && wanted.text == ".")
        wanted.text.clear();
    put_value(doc, *row, wanted);
    return set_result::done;
}

int int_variable(document& doc, std::string_view name)
{
    return static_cast<int>(real_variable(doc, name));
}

double real_variable(document& doc, std::string_view name)
{
    const list_ptr value = get_variable(doc, name);
    switch (value ? type_of_code(value->restype) : value_type::none) {
    case value_type::real:
        return value->resval.rreal;
    case value_type::int16:
        return value->resval.rint;
    case value_type::int32:
        return value->resval.rlong;
    default:
        return 0.0;
    }
}

std::string text_variable(document& doc, std::string_view name)
{
    const list_ptr value = get_variable(doc, name);
    const bool is_text = value && type_of_code(value->restype) == value_type::text && value->resval.rstring;
    return is_text ? value->resval.rstring : "";
}

void set_int(document& doc, std::string_view name, int value)
{
    set_real(doc, name, value);
}

void set_real(document& doc, std::string_view name, double value)
{
    const variable_row* row = storable_row(name);
    if (!row) {
        // Worked-out ones that can be set at all take whole numbers (CVPORT).
        const list_ptr node(rb_int(RTSHORT, static_cast<int>(value)));
        set_variable(doc, name, *node);
        return;
    }
    stored_value wanted;
    wanted.number[0] = value;
    put_value(doc, *row, wanted);
}

void set_text(document& doc, std::string_view name, std::string_view value)
{
    const variable_row* row = storable_row(name);
    if (!row || row->set) {
        const list_ptr node(rb_text(RTSTR, value));
        set_variable(doc, name, *node);
        return;
    }
    stored_value wanted;
    wanted.text = value;
    put_value(doc, *row, wanted);
}

void set_point(document& doc, std::string_view name, const double* point)
{
    const variable_row* row = storable_row(name);
    if (!row)
        return;
    stored_value wanted;
    const int count = row->form == variable_form::point3 ? 3 : 2;
    for (int i = 0; i < count; ++i)
        wanted.number[i] = point[i];
    put_value(doc, *row, wanted);
}

void set_errno(int value)
{
    static const variable_row* const row = find_row("ERRNO");
    stored_value wanted;
    wanted.number[0] = value;
    // Of the session: which drawing is current makes no difference.
    if (has_document())
        put_value(current_document(), *row, wanted);
}

} // namespace host::db

extern "C" {

int acedGetVar(const char* name, resbuf* value)
{
    if (!name || !value || !host::has_document())
        return RTERROR;
    host::list_ptr found = host::db::get_variable(host::current_document(), name);
    if (!found)
        return RTERROR;
    // The caller's node takes the value over, its text too; the rest of the caller's list stays.
    value->restype = found->restype;
    value->resval = found->resval;
    found->restype = RTNONE;
    return RTNORM;
}

int acedSetVar(const char* name, const resbuf* value)
{
    host::trace_line trace("acedSetVar");
    trace.text(name).word(value ? host::printed_value(*value) : "nil");
    if (!name || !value || !host::has_document())
        return trace.status(RTERROR);
    const auto result = host::db::set_variable(host::current_document(), name, *value);
    return trace.status(result == host::db::set_result::done ? RTNORM : RTERROR);
}
}
