// lists.h: result buffer lists written and read as text, for tests: "0 LINE;8 FENCE;10 1,2,3".
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "host/core/document.h"
#include "host/core/resbuf.h"
#include "host/database/entities.h"

namespace host::db::testing_lists
{

inline resbuf* node_of_text(const database* db, int code, const std::string& value)
{
    switch (type_of_code(code)) {
    case value_type::real:
        return rb_real(code, std::atof(value.c_str()));
    case value_type::point: {
        double at[3] = {0, 0, 0};
        std::sscanf(value.c_str(), "%lf,%lf,%lf", &at[0], &at[1], &at[2]);
        return rb_point(code, at);
    }
    case value_type::int16:
    case value_type::int32:
        return rb_int(code, std::atoi(value.c_str()));
    case value_type::text:
        return rb_text(code, value);
    case value_type::name: { // "#12": the object with that index
        std::int32_t name[2] = {0, 0};
        if (db && value.starts_with('#'))
            make_name(*db, static_cast<object_id>(std::atoi(value.c_str() + 1)), name);
        return rb_name(code, name);
    }
    default:
        return rb_new(code);
    }
}

inline list_ptr list_of(std::string_view text, const database* db = nullptr)
{
    list_builder out;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string pair(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t blank = std::min(pair.find(' '), pair.size());
        out.add(node_of_text(db, std::atoi(pair.c_str()), pair.substr(std::min(blank + 1, pair.size()))));
    }
    return list_ptr(out.take());
}

inline std::string number(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

inline std::string shown_node(const resbuf& node)
{
    const std::string code = std::to_string(node.restype);
    switch (type_of_code(node.restype)) {
    case value_type::real:
        return code + ' ' + number(node.resval.rreal);
    case value_type::point:
        return code + ' ' + number(node.resval.rpoint[0]) + ',' + number(node.resval.rpoint[1]) + ',' +
               number(node.resval.rpoint[2]);
    case value_type::int16:
        return code + ' ' + std::to_string(node.resval.rint);
    case value_type::int32:
        return code + ' ' + std::to_string(node.resval.rlong);
    case value_type::text:
        return code + ' ' + node.resval.rstring;
    case value_type::name:
        return code + " #" + std::to_string(node.resval.rlname[0]);
    default:
        return code;
    }
}

// The whole list; with `bare` without name, owner and handle, which come first.
inline std::string shown(const resbuf* list, bool bare = true)
{
    std::string text;
    for (bool in_head = true; list; list = list->rbnext) {
        in_head = in_head && list->restype != 100;
        if (bare && in_head && (list->restype == -1 || list->restype == 330 || list->restype == 5))
            continue;
        text += (text.empty() ? "" : ";") + shown_node(*list);
    }
    return text;
}

// A new drawing that is current, and what tests do in it.
struct Drawing : testing::Test {
    database& db;
    Drawing() : db(database_of(open_document())) {}
    ~Drawing() override { close_all_documents(); }

    int make(std::string_view text) { return acdbEntMake(list_of(text, &db).get()); }
    object_id made(std::string_view text)
    {
        EXPECT_EQ(make(text), RTNORM) << text;
        return last();
    }
    object_id last() const
    {
        ads_name name;
        return acdbEntLast(name) == RTNORM ? id_of_name(db, name) : 0;
    }
    std::string got(object_id id, const char* applications = nullptr) const
    {
        ads_name name;
        make_name(db, id, name);
        const list_ptr wanted(applications ? rb_text(RTSTR, applications) : nullptr);
        return shown(list_ptr(acdbEntGetX(name, wanted.get())).get());
    }
    int change(object_id id, std::string_view text)
    {
        return acdbEntMod(list_of("-1 #" + std::to_string(id) + ';' + std::string(text), &db).get());
    }
    int erase(object_id id)
    {
        ads_name name;
        make_name(db, id, name);
        return acdbEntDel(name);
    }
    object_id next(object_id id) const
    {
        ads_name name, found;
        make_name(db, id, name);
        return acdbEntNext(id ? name : nullptr, found) == RTNORM ? id_of_name(db, found) : 0;
    }
    // The types that acdbEntNext meets from an object on; 0: from the first.
    std::string walk(object_id from) const
    {
        std::string types;
        for (object_id at = next(from); at; at = next(at))
            types += (types.empty() ? "" : " ") + std::string(db.type_of(at));
        return types;
    }
};

} // namespace host::db::testing_lists
