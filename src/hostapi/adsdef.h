// adsdef.h: the host's plain value types, status codes and type codes.
#pragma once

#include <cstdint>

using ads_real = double;
using ads_point = ads_real[3];
using ads_matrix = ads_real[4][4];

// Name of an entity or of a selection set: two 32-bit words, copied by value, opaque to the module.
using ads_name = std::int32_t[2];

// A chunk of binary extended data or of a binary group; `buf` has `clen` bytes.
struct ads_binary {
    short clen;
    char* buf;
};

// One value of a list. Lists are chained through `rbnext`; the restype says which member of
// the union holds. A list received from the host belongs to the receiver (acutRelRb).
struct resbuf {
    resbuf* rbnext;
    short restype;
    union value {
        ads_real rreal;
        ads_real rpoint[3];
        short rint;
        std::int32_t rlong;
        char* rstring;
        std::int32_t rlname[2];
        ads_binary rbinary;
    } resval;
};

// Result type codes.
constexpr int RTNONE = 5000;    // no value; the end of a built list
constexpr int RTREAL = 5001;    // double
constexpr int RTPOINT = 5002;   // 2D point
constexpr int RTSHORT = 5003;   // 16-bit integer
constexpr int RTANG = 5004;     // angle in radians
constexpr int RTSTR = 5005;     // string
constexpr int RTENAME = 5006;   // entity name
constexpr int RTPICKS = 5007;   // selection set
constexpr int RTORINT = 5008;   // orientation, radians
constexpr int RT3DPOINT = 5009; // 3D point
constexpr int RTLONG = 5010;    // 32-bit integer
constexpr int RTVOID = 5014;    // the symbol with no printed value
constexpr int RTLB = 5016;      // list begin
constexpr int RTLE = 5017;      // list end
constexpr int RTDOTE = 5018;    // dot of a dotted pair, before its last element
constexpr int RTNIL = 5019;     // nil
constexpr int RTDXF0 = 5020;    // group 0 of an entity list
constexpr int RTT = 5021;       // the symbol T
constexpr int RTRESBUF = 5023;  // a list inside a list

// Status codes.
constexpr int RTNORM = 5100;   // done
constexpr int RTERROR = -5001; // failed
constexpr int RTCAN = -5002;   // cancelled by the user
constexpr int RTREJ = -5003;   // the host refused the request
constexpr int RTFAIL = -5004;  // no contact with AutoLISP
constexpr int RTKWORD = -5005; // answered by a key word or by any input

// acedInitGet: what an answer may not be, and what it may be besides.
constexpr int RSG_NONULL = 1;  // no empty answer
constexpr int RSG_NOZERO = 2;  // no zero
constexpr int RSG_NONEG = 4;   // nothing below zero
constexpr int RSG_NOLIM = 8;   // points outside the drawing limits are taken
constexpr int RSG_DASH = 32;   // rubber band dashed
constexpr int RSG_2D = 64;     // acedGetDist ignores z
constexpr int RSG_OTHER = 128; // any input is handed on as a key word
