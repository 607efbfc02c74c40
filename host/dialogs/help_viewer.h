// help_viewer.h: pages of help in the history.
//
// Help files of the platform are compiled ones, NAME.chm. On this host their pages lie as they are in a
// directory: NAME beside where the file would be or, for the product's own zentrik.chm, help in the product's
// directory. A page is addressed as NAME.chm::/page.html, the start page index.html as NAME.chm.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace host::dialogs
{

// The directory of a help file's pages, with its separator; nothing when there is none.
std::optional<std::string> help_pages(std::string_view help_file);
// Shows a page; false when it isn't there, which is told.
bool show_help(std::string_view target);

} // namespace host::dialogs
