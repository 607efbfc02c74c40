#include "drawing/object_list.h"

#include "common/names.h"
#include "common/text.h"
#include "hostapi/ads.h"

object_list::object_list(const ads_name name) : list_(acdbEntGet(name)) {}

object_list object_list::with_extended_data(const ads_name name)
{
    char every[] = "*";
    resbuf application{nullptr, RTSTR, {}};
    application.resval.rstring = every;
    return object_list(acdbEntGetX(name, &application));
}

resbuf* object_list::without_name() const
{
    return list_ ? list_->rbnext : nullptr;
}

resbuf* object_list::find(int group) const
{
    return rb_find(list_.get(), group);
}

std::string_view object_list::text(int group) const
{
    const resbuf* node = rb_find(static_cast<const resbuf*>(list_.get()), group);
    return node && node->resval.rstring ? node->resval.rstring : "";
}

std::string in_capitals(std::string_view text)
{
    std::string capitals(text);
    str_upper(capitals.data());
    return capitals;
}
