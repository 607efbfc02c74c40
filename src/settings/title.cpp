#include "settings/title.h"

#include <string>

#include "common/lisp_vars.h"
#include "common/paths.h"
#include "common/text.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "hostapi/framework.h"

namespace
{

constexpr const char* NO_FILE = "NONE";

// The job's coordinate file as the title shows it. Its variable belongs to the drawing in front.
std::string coordinate_file()
{
    const AcApDocManager* documents = acDocManagerPtr();
    if (!documents || !documents->curDocument())
        return NO_FILE;
    char path[ADS_PATH_SIZE], name[ADS_PATH_SIZE];
    lisp_get_text(path, "crdfile");
    path_file_name(path, name);
    if (name[0] == '\0')
        return NO_FILE;
    str_upper(name);
    const std::string upper = name;
    return upper.substr(0, upper.find(".CRD"));
}

} // namespace

void title_refresh()
{
    const CWnd* frame = acedGetAcadFrame();
    if (!frame)
        return;
    const std::string title = "AutoCAD with Zentrik KRW - [CRD: " + coordinate_file() + "]";
    SetWindowTextA(frame->m_hWnd, title.c_str());
}
