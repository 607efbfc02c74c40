// tools_input.cpp: the small grammar that makes calls and likely answers out of bytes.
#include <cstdio>
#include <iterator>

#include "fuzz/tools_run.h"

namespace
{

constexpr std::size_t MOST_ANSWERS = 80;

class byte_reader
{
public:
    explicit byte_reader(std::string_view bytes) : rest_(bytes) {}
    bool done() const { return rest_.empty(); }
    unsigned next()
    {
        if (rest_.empty())
            return 0;
        const auto byte = static_cast<unsigned char>(rest_.front());
        rest_.remove_prefix(1);
        return byte;
    }
    template <class T, std::size_t N>
    const T& choose(const T (&table)[N])
    {
        return table[next() % N];
    }

private:
    std::string_view rest_;
};

const char* const NUMBERS[] = {
    "0",         "1",      "2.5",   "-1",     "-2.5",   "5",      "10",        "-10",    "0.25",   "100",
    "-100",      "3.0",    "20",    "1e-9",   "-1e-9",  "1e6",    "-1e6",      "1e12",   "1e100",  "-1e100",
    "1e308",     "-1e308", "1e999", "-1e999", "-0",     ".5",     "+3",        "1e-300", "0.0001", "45.3030",
    "89.5960",   "360",    "725.5", "0x10",   "1e",     "--1",    "1.2.3",     ".",      "nan",    "inf",
    "3.1415926", "7.0711", "15",    "30",     "62.832", "31.416", "1e9999999", "-.25",   "4.5",    "0.005",
};
const char* const LONG_NUMBER =
    "1234567890123456789012345678901234567890123456789012345678901234567890123456789"
    "0123456789012345678901234567890123456789012345678901234567890123456789012345";

const char* const MOSTLY_YES[] = {"Yes", "Y", "", "No"};
const char* const MOSTLY_NO[] = {"No", "N", "", "Yes"};
const char* const TEXTS[] = {
    "x",
    "Draw",
    "help me",
    "   ",
    "R 10",
    "%s%n%d",
    "a\tb",
    "H\xC3\xB6he 12\xC2\xB0",
    "Z\xC3\xBCrich \xE2\x82\xAC",
    "(strcat \"R\" \"5\")",
    "(list 1.0 2.0)",
    "(list (* 1e200 1e200) 0.0)",
    "(* 1e200 1e200)",
    "(/ 1 0)",
    "!pi",
    "!nothing",
    "(entlast)",
    "(list (entlast) (list 1.0 1.0))",
    "\"quoted\"",
    "'_.LINE",
    "#",
    "@",
    "<",
    ",",
};

// Picks that fall on a segment or an arc, `#N` as below.
const char* const SEGMENT_PICKS[] = {
    "#%0% 7,0",
    "#%0% 1,1",
    "#%0% 5,0",
    "#%2% -4,-4",
    "#%2% -2.5,-1.5",
    "#%3% 1e299,0",
    "#%7% 9,10",
    "#%7% 10,19",
    "#%7% 2,10",
    "#%8% 45,-2.5",
    "#%8% 50,9",
    "#%8% 41,10",
    "#%8% 40,1",
    "#%9% 3,30",
    "#%9% 5,30",
    "#%12% 640005,5119997.9",
    "#%12% 640010,5120009",
    "#%13% -12,10",
    "#%13% -20,18",
    "#%13% -12,13",
    "#%14% -18,-10",
    "#%14% -28,-14",
    "#%15% 2,42",
    "5,0",
    "45,10",
    "#%1%",
    "#%10%",
    "#%11%",
};
const char* const ARC_PICKS[] = {
    "#%4% 25,0.5", "#%4% 20.5,5", "#%4% 23.5355,3.5355", "#%4%", "#%5%",
    "#%5% 30,0",   "#%6%",        "#%6% 1e12,0",         "20,5",
};

// Words that an operation's prompts know, and more often than by chance; and what it asks for first: n a
// number, k a word, y and z Yes and No with the first or the last more often, t a text, p a point, s the pick
// of a segment, a that of an arc.
struct keys_of_operation {
    int operation;
    const char* opening;
    const char* letters; // that a number may follow
    std::initializer_list<const char*> words;
};
const keys_of_operation KEYS[] = {
    {0, "s", "", {"x"}},
    {1, "s", "ABRLTUSNPCODMEH", {"A",   "B",         "C",        "D",         "E",      "H",  "L",
                                 "M",   "N",         "O",        "P",         "R",      "S",  "T",
                                 "U",   "Help",      "130.1005", "B130.1005", "B245.3", "B5", "B50",
                                 "B6.", "B945.5959", "A45.3030", "A-90",      "R10",    "L5", "T25",
                                 "T-3", "u",         "n",        "p",         "c"}},
    {2, "ak", "TU", {"U", "u", "Yes", "No", "Y", "T10", "t0.5", "T-4", "T1e99", "-3", "2"}},
    {4, "zynppppkp", "U", {"Yes", "No", "Y", "N", "U", "Undo", "u", ""}},
    {5, "", "", {"yes"}},
    {6,
     "tnnkka",
     "",
     {"Inside", "Outside", "I", "O", "Yes", "No", "N", "", "MAIN STREET", "A", "W i d e", "1"}},
    {9, "", "", {"yes"}},
    {30, "nss", "", {"0.5", "2", ""}},
};
const keys_of_operation& keys_of(int operation)
{
    for (const keys_of_operation& keys : KEYS)
        if (keys.operation == operation)
            return keys;
    return KEYS[0];
}

std::string near_coordinate(byte_reader& in)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", (static_cast<int>(in.next()) - 100) * 0.25);
    return text;
}

// Where the drawing's objects are, beside them, and far away.
std::string point_of(byte_reader& in)
{
    static const char* const POINTS[] = {
        "0,0",
        "10,0",
        "5,0",
        "25,0",
        "20,5",
        "23.5355,3.5355",
        "0,10",
        "10,20",
        "5,5",
        "40,10",
        "45,10",
        "30,0",
        "@1,0",
        "@5<45",
        "@0,0",
        "10<30",
        "@-3,4,5",
        "@",
        "640000,5120000",
        "640010,5120000",
        "1e6,-1e6",
        "1e100,1e100",
        "1e308,-1e308",
        "-1e308,1e308",
        "1e308,0,1e308",
        "0,0,100",
        "1e-9,1e-9",
        "nan,0",
        "1e999,0",
        "5,5,5,5",
    };
    const unsigned way = in.next() % 4;
    if (way == 0)
        return in.choose(POINTS);
    std::string text = near_coordinate(in);
    text += "," + near_coordinate(in);
    return way == 1 ? text + "," + near_coordinate(in) : text;
}

// `#N` stands for the N-th object of the drawing until it is there.
std::string pick_of(byte_reader& in, int object_count)
{
    const unsigned which = in.next();
    if (which % 16 == 15)
        return which & 16 ? "#last" : "#FFFFFF";
    std::string text = "#%" + std::to_string(which % static_cast<unsigned>(object_count)) + "%";
    return which & 128 ? text : text + " " + point_of(in);
}

std::string number_of(byte_reader& in)
{
    const unsigned which = in.next();
    return which == 255 ? LONG_NUMBER : NUMBERS[which % std::size(NUMBERS)];
}

std::string key_of(byte_reader& in, const keys_of_operation& keys)
{
    return keys.words.begin()[in.next() % keys.words.size()];
}

std::string key_and_number(byte_reader& in, const keys_of_operation& keys)
{
    const std::string_view letters = keys.letters;
    const std::string letter =
        letters.empty() ? std::string() : std::string(1, letters[in.next() % letters.size()]);
    return letter + number_of(in);
}

std::string answer_of(byte_reader& in, const keys_of_operation& keys, int object_count)
{
    const unsigned kind = in.next() % 32;
    if (kind < 10)
        return key_of(in, keys);
    if (kind < 14)
        return number_of(in);
    if (kind < 17)
        return key_and_number(in, keys);
    if (kind < 22)
        return point_of(in);
    if (kind < 24)
        return in.choose(SEGMENT_PICKS);
    if (kind < 26)
        return in.choose(ARC_PICKS);
    if (kind < 28)
        return pick_of(in, object_count);
    if (kind == 28)
        return in.next() % 4 ? in.choose(TEXTS) : std::string(300, 'q');
    return kind == 31 ? "^C" : "";
}

// Usually what the prompt wants, once in eight anything.
std::string opening_answer_of(byte_reader& in, char wanted, const keys_of_operation& keys, int object_count)
{
    if (in.next() % 8 == 7)
        return answer_of(in, keys, object_count);
    switch (wanted) {
    case 'n':
        return number_of(in);
    case 'p':
        return point_of(in);
    case 's':
        return in.choose(SEGMENT_PICKS);
    case 'a':
        return in.next() % 4 ? in.choose(ARC_PICKS) : in.choose(SEGMENT_PICKS);
    case 'y':
        return in.choose(MOSTLY_YES);
    case 'z':
        return in.choose(MOSTLY_NO);
    case 't':
        return in.next() % 2 ? "MAIN STREET" : in.choose(TEXTS);
    default:
        return key_of(in, keys);
    }
}

// ---- the values of a call --------------------------------------------------------------------------------

std::string lisp_number(byte_reader& in)
{
    static const char* const VALUES[] = {
        "0.0",  "1.0",  "-1.0",   "2.5",   "5.0",   "25.0",  "0.5",    "10.0", "100.0",
        "0.01", "1e-9", "1e-300", "1e6",   "1e100", "1e308", "-1e308", "1",    "-1",
        "0",    "25",   "nil",    "\"7\"", "6.25",  "24.0",  "-25.0",  "20.0", "(* 1e200 1e200)",
        "4.0"};
    return in.choose(VALUES);
}

std::string lisp_place(byte_reader& in)
{
    static const char* const PLACES[] = {"(list 0.0 0.0 0.0)",
                                         "(list 20.0 5.0 0.0)",
                                         "(list 6.25 0.0 0.0)",
                                         "(list 1e6 -1e6 0.0)",
                                         "(list 1e308 0.0 0.0)",
                                         "(list -1e308 1e308 0.0)",
                                         "(list 0.0 (* 1e200 1e200) 0.0)",
                                         "5.0",
                                         "(list 640000.0 5120000.0 9.0)"};
    if (in.next() % 2)
        return in.choose(PLACES);
    std::string text = "(list " + near_coordinate(in);
    text += " " + near_coordinate(in) + " 0.0)";
    return text;
}

std::string lisp_layer(byte_reader& in)
{
    static const char* const LAYERS[] = {"\"\"",       "\"ARROWS\"", "\"0\"",  "\"OFF\"", "\"FROZEN\"",
                                         "\"LOCKED\"", "\"a<b>c*\"", "\"  \"", "5",       "\"CLAYER\""};
    return in.choose(LAYERS);
}

std::string lisp_style(byte_reader& in)
{
    static const char* const STYLES[] = {"0", "1", "2", "3", "4", "-1", "1.0", "32767"};
    return in.choose(STYLES);
}

std::string lisp_set(byte_reader& in)
{
    static const char* const SETS[] = {"(ssadd)", "(ssadd (entlast))", "nil", "(entlast)", "1"};
    return in.choose(SETS);
}

// The kinds of values are named by a letter each, as the operations' own table does; a call may stop early.
std::string values_of_call(byte_reader& in, std::string_view kinds)
{
    std::string text;
    const std::size_t count = kinds.empty() ? 0 : in.next() % 8 ? kinds.size() : in.next() % (kinds.size() + 1);
    for (const char kind : kinds.substr(0, count)) {
        text += ' ';
        text += kind == 'r'   ? lisp_number(in)
                : kind == 'p' ? lisp_place(in)
                : kind == 's' ? lisp_style(in)
                : kind == 't' ? lisp_layer(in)
                              : lisp_set(in);
    }
    return text;
}

struct operation {
    int number;
    std::string_view values;
};
const operation OPERATIONS[] = {{0, ""},         {1, ""},  {2, ""},      {4, ""},
                                {5, "rrpprstn"}, {6, "r"}, {9, "rrppr"}, {30, ""}};

// ---- settings ---------------------------------------------------------------------------------------------

std::string variables_of(byte_reader& in)
{
    static const char* const DIMSCALES[] = {"1.0", "0.0", "50.0", "1e-300"};
    static const char* const DIMASZ[] = {"0.18", "0.0", "2.5", "1e100"};
    const unsigned bits = in.next(), more = in.next();
    std::string out;
    const auto set = [&out](const char* name, const char* value) {
        out += std::string("(setvar \"") + name + "\" " + value + ")";
    };
    set("DIMSCALE", DIMSCALES[bits & 3]);
    set("DIMASZ", DIMASZ[bits >> 2 & 3]);
    set("OSMODE", bits & 16 ? "39" : "0");
    set("ANGDIR", bits & 32 ? "1" : "0");
    set("ANGBASE", bits & 64 ? "1.0" : "0.0");
    set("HIGHLIGHT", bits & 128 ? "0" : "1");
    if (more % 8 == 1)
        out += "(command \"_.ZOOM\" \"_C\" '(0.0 0.0) 1e-6)";
    if (more % 8 == 2)
        out += "(command \"_.ZOOM\" \"_C\" '(0.0 0.0) 1e9)";
    if (more % 8 == 3)
        out += "(setvar \"AUNITS\" 4)(setvar \"LUNITS\" 4)";
    if (more % 8 == 4)
        out += "(setvar \"CMDECHO\" 0)(setvar \"ELEVATION\" 12.5)";
    if (more % 8 == 5)
        out += "(command \"_.STYLE\" \"TALL\" \"txt\" 2.5 1.0 0.0 \"_N\" \"_N\" \"_N\")";
    return out;
}

} // namespace

tool_input tool_input_of(std::string_view bytes, int object_count)
{
    byte_reader in(bytes);
    tool_input out;
    const unsigned first = in.next();
    const operation& op = OPERATIONS[first % std::size(OPERATIONS)];
    out.operation = op.number;
    out.break_after = first >= 224 ? static_cast<long>(first - 223) / 4 : 0;
    out.settings = variables_of(in);
    if (const unsigned refused = in.next(); refused >= 224)
        out.refused_request = static_cast<long>(refused - 223) + (refused & 1 ? 30L : 0L);
    out.call = "(cf:zentutil \"\" " + std::to_string(op.number) + values_of_call(in, op.values) + ")";
    const keys_of_operation& keys = keys_of(op.number);
    for (const char wanted : std::string_view(keys.opening))
        if (!in.done())
            out.answers += opening_answer_of(in, wanted, keys, object_count) + "\n";
    for (std::size_t i = 0; i < MOST_ANSWERS && !in.done(); ++i)
        out.answers += answer_of(in, keys, object_count) + "\n";
    return out;
}
