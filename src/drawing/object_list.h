// object_list.h: the group list of a drawing object, given back at the end of its scope.
#pragma once

#include <string>
#include <string_view>

#include "common/held_list.h"
#include "hostapi/adsdef.h"

class object_list
{
public:
    explicit object_list(const ads_name name); // empty when there is no such object, or it is erased

    // With the extended data of every application.
    static object_list with_extended_data(const ads_name name);

    explicit operator bool() const { return static_cast<bool>(list_); }
    resbuf* get() const { return list_.get(); }
    resbuf* without_name() const; // what is behind the first node, the object's own name
    resbuf* find(int group) const;
    std::string_view text(int group) const; // empty when there is none
    std::string_view type() const { return text(0); }

private:
    explicit object_list(resbuf* list) : list_(list) {}
    held_list list_;
};

std::string in_capitals(std::string_view text);
