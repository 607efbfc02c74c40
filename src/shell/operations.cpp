#include "shell/operations.h"

#include "common/arguments.h"
#include "common/directories.h"
#include "common/text_buffer.h"
#include "hostapi/ads.h"
#include "shell/handlers.h"
#include "shell/life_handlers.h"
#include "shell/tool_handlers.h"

const operation OPERATIONS[] = {
    {0, "", op_horizontal_view, false},
    {1, "", op_pointer, false},
    {2, "", op_extend_arc, false},
    {3, "", op_trim_symbols, false},
    {4, "", op_leader, false},
    {5, "rrpprstn", op_side_arrow, false},
    {6, "r", op_curved_text, false},
    {8, "", nullptr, false},
    {9, "rrppr", op_arrow_pair, false},
    {10, "ep", op_segment_at_pick, false},
    {11, "ep", op_angle_at_pick, false},
    {12, "enr", op_rotate_to_chain, false},
    {14, "ss", op_beep, false},
    {15, "tt", op_write_polylines, false},
    {16, "npt", op_drag_move, false},
    {19, "t", op_system, false},
    {20, "t", op_select_all_of_application, false},
    {21, "n", op_free_selection, false},
    {22, "ttt", op_coordinate_program, false},
    {23, "es", op_polyline_vertices, false},
    {24, "t", op_select_of_application, false},
    {25, "ts", nullptr, false},
    {26, "t", op_save_settings, false},
    {27, "tt", op_read_polylines, false},
    {28, "", op_select_hole_symbols, false},
    {29, "np", op_second_point, false},
    {30, "", op_add_arrow, false},
    {31, "", nullptr, false},
    {32, "", nullptr, false},
    {33, "ts", op_tile_preview, false},
    {34, "tttt", nullptr, false},
    {35, "", op_title, false},
    {36, "t", op_open_pdf, false},
    {37, "", nullptr, false},
    {38, "", op_help, false},
    {39, "ts", op_find_symbol, false},
    {40, "ts", op_remember_file, false},
    {41, "t", op_config_directory, false},
    {42, "", op_wizard, false},
    {43, "t", nullptr, false},
    {44, "t", op_html_help, false},
    {45, "t", op_status_text, true},
    {46, "tsp", op_screen_mark, true},
    {47, "t", op_run_and_wait, false},
    {48, "ttts", op_pick_file, false},
    {49, "", nullptr, false},
    {50, "ts", op_compact_path, false},
    {51, "t", op_check_name, false},
    {-1, nullptr, nullptr, false},
};

const operation& find_operation(const resbuf& number_node)
{
    const int number = short_of(number_node);
    for (const operation* op = OPERATIONS; op->number >= 0; ++op)
        if (op->number == number && (!op->wants_short_number || number_node.restype == RTSHORT))
            return *op;
    return OPERATIONS[0];
}

const operation* operation_of_call(const resbuf* chain)
{
    if (!chain)
        return &OPERATIONS[0];
    // A directory alone only sets data_dir.
    return chain->rbnext ? &find_operation(*chain->rbnext) : nullptr;
}

int op_dispatch()
{
    resbuf* chain = acedGetArgs();
    if (chain && chain->restype == RTSTR && chain->resval.rstring)
        text_set(data_dir, chain->resval.rstring);
    const operation* op = operation_of_call(chain);
    if (op && op->run) {
        op_call call{chain ? chain->rbnext->rbnext : nullptr};
        op->run(call);
    }
    acutRelRb(chain);
    return RTNORM;
}
