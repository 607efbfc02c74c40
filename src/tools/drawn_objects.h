// drawn_objects.h: which objects a write or a command of the host has added to the drawing. Either may
// have failed, and then the drawing's last object is somebody else's.
#pragma once

#include "hostapi/adsdef.h"

// The drawing's last object at a certain time.
class newest_object
{
public:
    newest_object();
    // The drawing's last object now, when it has come since. Nothing must have been erased meanwhile but what
    // came since. False, with `name` of no use, when there is none.
    bool added(ads_name name) const;

private:
    ads_name name_{};
    bool any_;
};

// The set of what a tool has drawn, which is its value in AutoLISP. Given back unless it was answered.
class drawn_set
{
public:
    drawn_set();
    ~drawn_set();
    drawn_set(const drawn_set&) = delete;
    drawn_set& operator=(const drawn_set&) = delete;

    void add_new(const newest_object& before); // the last object, when it came after that
    void add_last();                           // the last object, whichever it is
    void answer();

private:
    ads_name name_{};
    bool owned_;
};
