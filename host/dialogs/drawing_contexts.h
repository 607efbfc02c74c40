// drawing_contexts.h: what programs hold to draw on windows: device contexts, bitmaps, fonts.
#pragma once

namespace host::dialogs
{

// What is held and hasn't been given back, for tests.
int context_count();
int drawing_object_count(); // bitmaps and fonts

} // namespace host::dialogs
