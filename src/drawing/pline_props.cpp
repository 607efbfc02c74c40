#include "drawing/pline_props.h"

const char* pl_kind_name(int kind)
{
    static const char* const names[] = {"P2D", "P3D", "LW"};
    return kind >= KIND_P2D && kind <= KIND_LW ? names[kind] : "";
}
