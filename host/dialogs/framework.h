// framework.h: what modules have of the window framework, for tests of what they give back.
#pragma once

namespace host::dialogs
{

int extension_count(); // modules that it has taken and that haven't left
int library_count();   // CDynLinkLibrary objects
// Lets AfxInitExtensionModule fail from now on, or no longer.
void refuse_extensions(bool on);

} // namespace host::dialogs
