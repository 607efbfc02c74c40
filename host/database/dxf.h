// dxf.h: drawings as DXF files.
#pragma once

#include <memory>
#include <string>

#include "host/database/database.h"

namespace host::db
{

struct dxf_error {
    std::string file;
    long line = 0; // 0: the file as a whole; in binary files the byte offset
    std::string message;
    std::string text() const; // "FILE:LINE: message"
};

enum class dxf_version { r12, r2000, r2007 };

// Reads a file, ASCII of R12 to R2018 or binary, into a new database. Null and `error` filled
// when it can't be read or is damaged.
std::unique_ptr<database> read_dxf(const std::string& path, document& owner, dxf_error* error);
// The same from memory; `name` is for messages.
std::unique_ptr<database> parse_dxf(std::string_view bytes, const std::string& name, document& owner,
                                    dxf_error* error);

// Writes a file whole or not at all; the previous file stays as NAME.bak when `keep_backup`.
bool write_dxf(database& db, const std::string& path, dxf_version version, bool keep_backup, dxf_error* error);
std::string dxf_text(database& db, dxf_version version);

} // namespace host::db
