// setup.h: what a run of the host needs before the first program: places, module, product commands.
#pragma once

#include <string>

namespace app
{

// Directory of the product files: --share, else beside the program. Ends in '/'.
std::string share_directory(const std::string& wanted);
// Loads the module from beside the program or from the library directory. False with a complaint.
bool load_product_module();
// Runs share/lisp/zentrik.lsp in the current drawing, and from here on in each one that is opened.
bool load_product_commands();

} // namespace app
