// dxf_parts.h: a DXF file taken apart, between reading its pairs and filling the store. Inner header.
#pragma once

#include <string>
#include <vector>

#include "host/database/dxf.h"
#include "host/database/dxf_scan.h"

namespace host::db
{

constexpr int VERSION_R12 = 1009, VERSION_R13 = 1012, VERSION_R2007 = 1021;

struct dxf_object {
    group_list groups;        // as in the file, 0 first
    std::uint64_t handle = 0; // 0: the file gives none
    long place = 0;           // of its group 0 in the file
};

struct dxf_table {
    std::string name; // upper case
    dxf_object head;
    std::vector<dxf_object> records;
};

struct dxf_block {
    dxf_object begin, end;
    std::vector<dxf_object> entities;
};

struct dxf_parts {
    int version = VERSION_R12; // the number behind "AC"; a file that gives none is an old one
    std::vector<dxf_table> tables;
    std::vector<dxf_block> blocks;
    std::vector<dxf_object> entities, objects;
    std::uint64_t largest_handle = 0;
};

// Takes a file apart; header, classes, unknown sections and comments go straight into `db`. False: the
// scanner has the error.
bool read_parts(dxf_scanner& scanner, database& db, dxf_parts& parts);

// Puts the parts into the store; the parts are used up. What was odd about the file, but could be
// settled, comes as texts for people.
bool build_drawing(dxf_parts& parts, database& db, dxf_scanner& scanner, std::vector<std::string>* remarks);

} // namespace host::db
