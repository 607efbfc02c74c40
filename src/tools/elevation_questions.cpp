#include "tools/elevation_questions.h"

#include "common/arguments.h"
#include "common/key_word.h"
#include "common/text_buffer.h"
#include "hostapi/ads.h"

namespace
{

constexpr int DECIMAL = 2;         // LUNITS
constexpr int UNIT_PRECISION = -1; // the drawing's own

bool is_ended(int status)
{
    return status == RTCAN || status == RTERROR;
}

char upper_letter(const std::string& text)
{
    const char c = text.empty() ? '\0' : text[0];
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

double number_of_node(const resbuf& node, double standard)
{
    switch (node.restype) {
    case RTREAL:
        return node.resval.rreal;
    case RTSHORT:
        return node.resval.rint;
    case RTLONG:
        return node.resval.rlong;
    default:
        return standard;
    }
}

// "\nElevation to change to <12.50>: "
std::string prompt_with(const char* words, const std::string& standard)
{
    return std::string("\n") + words + " <" + standard + ">: ";
}

std::string value_text(double value)
{
    char text[ADS_TEXT_SIZE];
    if (acdbRToS(value, DECIMAL, UNIT_PRECISION, text) != RTNORM)
        text_format(text, "%g", value); // too long in decimals
    return text;
}

bool ask_zeros(elevation_rule* rule)
{
    char word[ADS_TEXT_SIZE];
    const int status = ask_key_word("Yes No", "\nIgnore zero elevations [<Yes>/No]? ", word);
    rule->ignore_zero = status != RTNORM || std::string(word) == "Yes";
    return !is_ended(status);
}

bool ask_mode(elevation_request* want)
{
    char word[ADS_TEXT_SIZE];
    const std::string prompt = prompt_with("[A]bsolute or [D]ifferential Change", want->mode_text);
    const int status = ask_key_word("Absolute Differential", prompt.c_str(), word);
    if (status == RTNORM)
        want->mode_text = word;
    want->rule.mode = upper_letter(want->mode_text);
    return !is_ended(status);
}

bool ask_factor(elevation_rule* rule)
{
    char word[ADS_TEXT_SIZE] = "";
    if (acedGetInput(word) != RTNORM)
        return true;
    acutPrintf("\nThis Option Does NOT Change INSERT's !");
    acedInitGet(RSG_NONULL | RSG_NOZERO, nullptr);
    rule->mode = 'S';
    return !is_ended(acedGetReal("\nScale factor to change elevations: ", &rule->value));
}

bool ask_difference(elevation_rule* rule)
{
    acutPrintf("\nPositive number increases, negative number decreases elevation.");
    const std::string prompt = prompt_with("Scale/Elevation difference", value_text(rule->value));
    acedInitGet(RSG_NOZERO, "Scale");
    double value = 0.0;
    const int status = acedGetDist(nullptr, prompt.c_str(), &value);
    if (status == RTKWORD)
        return ask_factor(rule);
    if (status == RTNORM)
        rule->value = value;
    return !is_ended(status);
}

bool ask_elevation(elevation_rule* rule)
{
    const std::string prompt = prompt_with("Elevation to change to", value_text(rule->value));
    acedInitGet(0, nullptr);
    double value = 0.0;
    const int status = acedGetReal(prompt.c_str(), &value);
    if (status == RTNORM)
        rule->value = value;
    return !is_ended(status);
}

} // namespace

void read_elevation_defaults(const resbuf* args, elevation_request* want)
{
    if (args && args->restype == RTLB)
        args = args->rbnext;
    want->mode_text = next_text(&args, want->mode_text.c_str());
    if (args)
        want->rule.value = number_of_node(*args, want->rule.value);
}

bool ask_elevation_request(elevation_request* want)
{
    if (!ask_zeros(&want->rule) || !ask_mode(want))
        return false;
    // A program's "Scale" goes the way of an elevation too: the value that it then asks for is the factor.
    return want->rule.mode == 'D' ? ask_difference(&want->rule) : ask_elevation(&want->rule);
}
