// Groups: which kind of value a code has, and single groups and look-ups in lists.
#include "host/database/database.h"

namespace host::db
{

namespace
{

struct code_range {
    std::int16_t low, high;
    group_kind kind;
};

// In the order of the codes; what lies between is an integer. 10 to 19 hold a point's 20 and 30 too.
constexpr code_range RANGES[] = {
    {-5, -1, group_kind::handle},     {0, 4, group_kind::text},          {5, 5, group_kind::handle},
    {6, 9, group_kind::text},         {10, 19, group_kind::point},       {20, 59, group_kind::real},
    {60, 99, group_kind::integer},    {100, 102, group_kind::text},      {105, 105, group_kind::handle},
    {110, 119, group_kind::point},    {120, 149, group_kind::real},      {160, 179, group_kind::integer},
    {210, 219, group_kind::point},    {220, 239, group_kind::real},      {270, 299, group_kind::integer},
    {300, 309, group_kind::text},     {310, 319, group_kind::binary},    {320, 369, group_kind::handle},
    {370, 389, group_kind::integer},  {390, 399, group_kind::handle},    {400, 409, group_kind::integer},
    {410, 419, group_kind::text},     {420, 429, group_kind::integer},   {430, 439, group_kind::text},
    {440, 459, group_kind::integer},  {460, 469, group_kind::real},      {470, 479, group_kind::text},
    {480, 481, group_kind::handle},   {999, 1003, group_kind::text},     {1004, 1004, group_kind::binary},
    {1005, 1005, group_kind::handle}, {1006, 1009, group_kind::text},    {1010, 1019, group_kind::point},
    {1020, 1059, group_kind::real},   {1060, 1071, group_kind::integer},
};

} // namespace

group_kind kind_of_code(int code)
{
    for (const code_range& range : RANGES)
        if (code <= range.high)
            return code >= range.low ? range.kind : group_kind::integer;
    return group_kind::integer;
}

group real_group(int code, double value)
{
    group made;
    made.code = static_cast<std::int16_t>(code);
    made.kind = group_kind::real;
    made.real = value;
    return made;
}

group int_group(int code, std::int64_t value)
{
    group made;
    made.code = static_cast<std::int16_t>(code);
    made.kind = group_kind::integer;
    made.integer = value;
    return made;
}

group point_group(int code, double x, double y)
{
    group made = point_group(code, x, y, 0.0);
    made.dimensions = 2;
    return made;
}

group point_group(int code, double x, double y, double z)
{
    group made;
    made.code = static_cast<std::int16_t>(code);
    made.kind = group_kind::point;
    made.dimensions = 3;
    made.point[0] = x;
    made.point[1] = y;
    made.point[2] = z;
    return made;
}

group handle_group(int code, std::uint64_t handle)
{
    group made;
    made.code = static_cast<std::int16_t>(code);
    made.kind = group_kind::handle;
    made.handle = handle;
    return made;
}

group text_group(int code, text_id text)
{
    group made;
    made.code = static_cast<std::int16_t>(code);
    made.kind = group_kind::text;
    made.text = text;
    return made;
}

const group* find(const group_list& groups, int code)
{
    for (const group& each : groups)
        if (each.code == code)
            return &each;
    return nullptr;
}

group* find(group_list& groups, int code)
{
    return const_cast<group*>(find(static_cast<const group_list&>(groups), code));
}

double real_of(const group_list& groups, int code, double otherwise)
{
    const group* found = find(groups, code);
    return found && found->kind == group_kind::real ? found->real : otherwise;
}

std::int64_t int_of(const group_list& groups, int code, std::int64_t otherwise)
{
    const group* found = find(groups, code);
    return found && found->kind == group_kind::integer ? found->integer : otherwise;
}

} // namespace host::db
