// Pages of HTML as plain text.
#include "host/dialogs/html_page.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "host/files/names.h"

using host::dialogs::html_page;
using host::dialogs::html_text;
using host::dialogs::parse_html;

namespace
{

std::string text(std::string_view page, std::size_t width = 40)
{
    return html_text(parse_html(page), width);
}

struct page_case {
    const char *what, *page, *text;
};

TEST(Html, BlocksAndTheirText)
{
    const page_case cases[] = {
        {"nothing", "", ""},
        {"text alone", "one\n two", "one two\n"},
        {"paragraphs", "<p>one<p>two</p>three", "one\n\ntwo\n\nthree\n"},
        {"headings", "<h1>Top</h1><h2>Sub</h2><h3>Low</h3><p>x", "Top\n===\n\nSub\n---\n\nLow\n\nx\n"},
        {"inline tags", "<p>a <b>b</b><i>c</i> <code>d</code>", "a bc d\n"},
        {"line break", "<p>one<br>two<br/>three", "one\ntwo\nthree\n"},
        {"rule", "<p>a<hr>b", "a\n\n----------------------------------------\n\nb\n"},
        {"list", "<ul><li>one<li>two</ul>", "- one\n- two\n"},
        {"numbers", "<ol><li>one</li><li>two</li></ol>", "1. one\n2. two\n"},
        {"list in a list", "<ul><li>a<ul><li>b</ul><li>c</ul>", "- a\n  - b\n- c\n"},
        {"paragraphs in an item", "<ul><li><p>a</p><p>b</p></li></ul>", "- a\n\n  b\n"},
        {"item without a list", "<li>a", "- a\n"},
        {"definitions", "<dl><dt>word<dd>what</dd></dl>", "word\n\n  what\n"},
        {"quotation", "<blockquote>a</blockquote>b", "  a\n\nb\n"},
        {"preformatted", "<pre>\na  b\n\n <b>c</b>\n</pre>", "    a  b\n\n     c\n"},
        {"hidden", "<title>T</title><style>p{}</style><script>if(a<b)</script>x", "x\n"},
        {"comment", "a<!-- <p> -->b", "ab\n"},
        {"doctype", "<!DOCTYPE html><?xml?>a", "a\n"},
    };
    for (const page_case& c : cases)
        EXPECT_EQ(text(c.page), c.text) << c.what;
}

TEST(Html, Entities)
{
    const page_case cases[] = {
        {"named", "a &lt;b&gt; &amp; &quot;c&quot;&nbsp;d", "a <b> & \"c\" d\n"},
        {"numbers", "&#65;&#x42;&#X43;", "ABC\n"},
        {"letters", "45&deg; &plusmn;&frac12; &uuml;", "45\xC2\xB0 \xC2\xB1\xC2\xBD \xC3\xBC\n"},
        {"unknown", "&nothing; &; & a", "&nothing; &; & a\n"},
        {"not ended", "&amp", "&amp\n"},
        {"no letter", "&#0;&#27;&#xD800;&#x110000;&#99999999;&#x;&#12x;",
         "&#0;&#27;&#xD800;&#x110000;&#99999999;\n&#x;&#12x;\n"},
    };
    for (const page_case& c : cases)
        EXPECT_EQ(text(c.page).substr(0, 30), std::string(c.text).substr(0, 30)) << c.what;
}

TEST(Html, LinksShowWhereTheyLead)
{
    EXPECT_EQ(text("see <a href=\"b.html\">the other</a>."), "see the other [b.html].\n");
    EXPECT_EQ(text("<a href='#here'>here</a> <a name=x>y</a>"), "here y\n");
    EXPECT_EQ(text("<a href=http://x.org/>http://x.org/</a>"), "http://x.org/\n") << "not twice";
    const html_page page =
        parse_html("<title> The  page </title><p id=a><a href='b.html'>x</a><a href='#c'></a>");
    EXPECT_EQ(page.links, (std::vector<std::string>{"b.html", "#c"}));
    EXPECT_EQ(page.anchors, std::vector<std::string>{"a"});
    EXPECT_EQ(page.title, "The  page");
}

TEST(Html, LongLinesAreWrapped)
{
    EXPECT_EQ(text("one two three four five six", 20), "one two three four\nfive six\n");
    EXPECT_EQ(text("<ul><li>one two three four five six</ul>", 20), "- one two three four\n  five six\n");
    EXPECT_EQ(text("a abcdefghijklmnopqrstuvwxyz b", 20), "a\nabcdefghijklmnopqrstuvwxyz\nb\n") << "words stay";
    EXPECT_EQ(text("\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC 123456789 b", 20),
              "\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC\xC3\xBC 123456789\nb\n")
        << "letters count, not bytes";
    EXPECT_EQ(text("<pre>one two three four five six</pre>", 20), "    one two three four five six\n");
}

TEST(Html, TablesStandInColumns)
{
    EXPECT_EQ(text("<table><tr><th>Name</th><th>What</th></tr><tr><td>a</td><td>first</td></tr></table>"),
              "Name  What\n----  -----\na     first\n");
    EXPECT_EQ(text("<table><tr><td>a<td>b<tr><td>longer</table>"), "a       b\nlonger\n") << "tags left open";
    EXPECT_EQ(text("<table><tr><td>k<td>one two three four five six seven</table>", 24),
              "k  one two three four\n   five six seven\n");
    EXPECT_EQ(text("<table><tr><td>k<td>abcdefghijklmnopqrstuvwxyz</table>", 20),
              "k  abcdefghijklmnopq\n   rstuvwxyz\n")
        << "words are cut in columns";
    EXPECT_EQ(text("<table><tr><td>a<br>b<td><p>c<ul><li>d</ul></table>"), "a b  c d\n");
    EXPECT_EQ(text("<table><tr><td>a<table><tr><td>b</table>c</table>d"), "a b c\n\nd\n") << "table in a table";
    EXPECT_EQ(text("<table></table>a"), "a\n");
    EXPECT_EQ(text("<table><caption>Sizes</caption><tr><td>a</td>x</tr></table>"), "Sizes\n\nx\n\na\n")
        << "text between cells comes in front";
    std::string wide = "<table><tr>";
    for (int i = 0; i < 10; ++i)
        wide += "<td>c" + std::to_string(i);
    EXPECT_EQ(text(wide, 30), "c0 | c1 | c2 | c3 | c4 | c5 |\nc6 | c7 | c8 | c9\n");
}

TEST(Html, DamagedPagesAreRead)
{
    const page_case cases[] = {
        {"sign that begins no tag", "a < b <3 <", "a < b <3 <\n"},
        {"tag not ended", "a<b", "a\n"},
        {"attribute not ended", "a<p x='y>b", "a\n"},
        {"comment not ended", "a<!-- b", "a\n"},
        {"hidden not ended", "a<script>b", "a\n"},
        {"ends without beginnings", "</ul></table></pre></blockquote></td></a></h1>a", "a\n"},
        {"cell without a table", "<td>a<td>b", "a\n\nb\n"},
        {"table not ended", "<table><tr><td>a", "a\n"},
        {"list not ended", "<ul><li>a", "- a\n"},
        {"unknown tags", "<blink a=1 b>x</blink>", "x\n"},
        {"capitals", "<UL><LI>a</UL>", "- a\n"},
    };
    for (const page_case& c : cases)
        EXPECT_EQ(text(c.page), c.text) << c.what;
}

bool has_controls(const std::string& shown)
{
    unsigned char before = 0;
    for (const char c : shown) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte < ' ' && c != '\n') || byte == 0x7F || (before == 0xC2 && byte >= 0x80 && byte < 0xA0))
            return true;
        before = byte;
    }
    return false;
}

TEST(Html, ControlCharactersDontReachTheScreen)
{
    const char bytes[] = "a\x1B[31m\0b\x07<pre>c\x1B[0m\x7F\td\r\n</pre>";
    const std::string page(bytes, sizeof bytes - 1);
    EXPECT_FALSE(has_controls(text(page)));
    EXPECT_EQ(text("a\xC2\x9B"
                   "31mb<pre>c\xC2\x9D"
                   "d</pre>"),
              "a31mb\n\n    cd\n")
        << "those of two bytes";
    EXPECT_EQ(text("a\x9D"
                   "b\xFF"),
              "ab\xC3\xBF\n")
        << "bytes that Windows-1252 leaves open";
    EXPECT_EQ(text("<a href='\x1B]0;x\x07\r\n\xC2\x9By'>a</a>"), "a []0;xy]\n") << "in a link";
}

TEST(Html, BytesThatAreNoUtf8AreWindows1252)
{
    EXPECT_EQ(text("Stra\xDF"
                   "e 45\xB0"),
              "Stra\xC3\x9F"
              "e 45\xC2\xB0\n");
    EXPECT_EQ(text("\xEF\xBB\xBF<p>a"), "a\n");
}

TEST(Html, AnyBytesGiveAPage)
{
    const char* const parts[] = {"<table>", "<tr>",   "<td>",     "</table>",  "<ul>",       "</ul>", "<li>",
                                 "<pre>",   "</pre>", "<h1>",     "</h1>",     "<a href=x>", "</a>",  "&amp;",
                                 "<!--",    "-->",    "<",        ">",         "\"",         "text ", "\n",
                                 "\xFF",    "\x1B",   "<script>", "</script>", "<dd>"};
    std::mt19937 random(20260101);
    for (int round = 0; round < 3000; ++round) {
        std::string page;
        for (auto i = random() % 60; i > 0; --i)
            page +=
                random() % 5 ? parts[random() % std::size(parts)] : std::string(1, static_cast<char>(random()));
        const std::string shown = text(page, 10 + random() % 80);
        EXPECT_FALSE(has_controls(shown)) << page;
        EXPECT_TRUE(host::is_utf8(shown)) << page;
    }
}

TEST(Html, DeepAndLongPagesAreRead)
{
    std::string deep, wide = "<table><tr>";
    for (int i = 0; i < 100000; ++i) {
        deep += "<ul><li><blockquote><table><td>";
        wide += "<td>";
    }
    EXPECT_EQ(text(deep + "x").find("x") != std::string::npos, true);
    EXPECT_EQ(text(wide + "x").find("x") != std::string::npos, true);
}

// Where a page's time grows with the square of its size this takes minutes.
TEST(Html, LongLinksAreRead)
{
    const std::size_t size = 8'000'000;
    const std::string link = std::string(size / 2, 'a') + "b";
    EXPECT_EQ(text("<a href=" + link + ">" + std::string(size, 'a') + "</a>"),
              std::string(size, 'a') + "\n[" + link + "]\n");
    EXPECT_EQ(text("<a href=" + std::string(2000, 'a') + ">" + std::string(3000, 'a') + "</a>"),
              std::string(3000, 'a') + "\n")
        << "not twice";
}

} // namespace
