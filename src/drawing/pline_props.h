// pline_props.h: what a polyline is apart from its vertices. A plain record, copied by value.
#pragma once

#include <cstdint>

constexpr int KIND_P2D = 0;  // old-style 2D polyline
constexpr int KIND_P3D = 1;  // 3D polyline
constexpr int KIND_LW = 2;   // lightweight polyline
constexpr int KIND_NONE = 4; // none of these

constexpr int CURVE_NONE = 0;
constexpr int CURVE_QUADRATIC = 5;
constexpr int CURVE_CUBIC = 6;

constexpr int PLINE_CLOSED = 1;
constexpr int PLINE_CURVE_FIT = 2;
constexpr int PLINE_SPLINE_FIT = 4;
constexpr int PLINE_3D = 8;
constexpr int PLINE_LINETYPE_GENERATION = 128;

constexpr int COLOR_BY_LAYER = 256;

struct pline_props {
    std::int32_t name[2] = {-1, -1}; // entity name slot, left so by the readers
    std::int32_t kind = KIND_NONE;
    double start_width = 0.0;
    double end_width = 0.0;
    double ltscale = 1.0;
    std::int32_t curve_type = CURVE_NONE;
    std::int32_t color = COLOR_BY_LAYER; // index, 0 by block
    double thickness = 0.0;
    std::int32_t flags = 0; // PLINE_ bits
    char linetype[30] = "BYLAYER";
    char layer[126] = ""; // empty: the current layer
};

// "P2D", "P3D", "LW"; empty for any other kind.
const char* pl_kind_name(int kind);
