// The title of the host's main window.
#include <gtest/gtest.h>

#include "settings/title.h"
#include "tests/fakes/fake_host.h"

namespace
{

std::string title_with(const std::string& coordinate_file)
{
    fake.lisp["crdfile"] = text_value(coordinate_file);
    title_refresh();
    return fake.window_title;
}

TEST(Title, ShowsTheCoordinateFile)
{
    host_session session;
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\Jobs\\site.crd", "SITE"},
        {"c:/jobs/Lot 17.CRD", "LOT 17"},
        {"plain.crd", "PLAIN"},
        {"a.txt", "A.TXT"},
        {"a.crd.bak", "A"},
        {"x.y.crd", "X.Y"},
        {"plain", "PLAIN"},
        {"C:\\Jobs\\", "NONE"},
        {"", "NONE"},
        {".crd", ""},
    };
    for (const auto& [file, shown] : cases)
        EXPECT_EQ(title_with(file), std::string("AutoCAD with Zentrik KRW - [CRD: ") + shown + "]") << file;
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(Title, ShowsNoneWithoutAFileOrADrawing)
{
    host_session session;
    title_refresh();
    EXPECT_EQ(fake.window_title, "AutoCAD with Zentrik KRW - [CRD: NONE]");
    fake.document_open = false;
    EXPECT_EQ(title_with("C:\\Jobs\\site.crd"), "AutoCAD with Zentrik KRW - [CRD: NONE]");
}

} // namespace
