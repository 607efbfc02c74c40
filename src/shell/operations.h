// operations.h: the operations of cf:zentutil by number.
#pragma once

#include "hostapi/adsdef.h"

// A call of an operation, for its handler.
struct op_call {
    const resbuf* args; // the nodes behind the operation number, released when the handler has returned
};

struct operation {
    int number;
    const char* reads;       // nodes in order: t text, s short, r real, p point, e entity, n selection set
    void (*run)(op_call&);   // null: nothing to run yet, the value is nil
    bool wants_short_number; // runs only when the number came as a 16-bit integer, else operation 0 does
};

// All operations in the order of their numbers, ended by one below 0.
extern const operation OPERATIONS[];

// What runs for an operation node: operation 0 for every number that isn't listed.
const operation& find_operation(const resbuf& number_node);
// What runs for a whole call: operation 0 for a call with no arguments, null for a directory alone.
const operation* operation_of_call(const resbuf* chain);

// The body of cf:zentutil: (directory number argument...). RTNORM in all cases; an operation tells its
// failure by the value that it leaves or by a message.
int op_dispatch();
