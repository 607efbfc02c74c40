// acut.cpp: the small utilities of the host: printing and wild cards.
#include <cstdarg>
#include <cstdlib>
#include <string>
#include <string_view>

#include "host/core/console.h"
#include "host/core/formatted.h"
#include "host/core/text.h"
#include "hostapi/ads.h"

namespace host
{

namespace
{

bool is_alpha(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0xC0;
}
bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

// One character against [...] at the start of `pattern`, which moves behind it. A '[' without its ']'
// stands for itself.
bool bracket_fits(char c, std::string_view& pattern)
{
    const std::size_t start = pattern.size() > 1 && pattern[1] == '~' ? 2 : 1;
    const std::size_t end = pattern.find(']', start + 1);
    if (end == std::string_view::npos) {
        pattern.remove_prefix(1);
        return c == '[';
    }
    bool fits = false;
    for (std::size_t i = start; i < end; ++i) {
        if (pattern[i] == '`' && i + 1 < end) {
            fits = fits || pattern[++i] == c;
        } else if (i + 2 < end && pattern[i + 1] == '-') {
            fits = fits || (c >= pattern[i] && c <= pattern[i + 2]);
            i += 2;
        } else {
            fits = fits || pattern[i] == c;
        }
    }
    const bool negated = start == 2;
    pattern.remove_prefix(end + 1);
    return fits != negated;
}

// One character of the text against the pattern's next element, which is not '*'.
bool element_fits(char c, std::string_view& pattern)
{
    switch (pattern.front()) {
    case '#':
        pattern.remove_prefix(1);
        return is_digit(c);
    case '@':
        pattern.remove_prefix(1);
        return is_alpha(c);
    case '.':
        pattern.remove_prefix(1);
        return !is_alpha(c) && !is_digit(c);
    case '?':
        pattern.remove_prefix(1);
        return true;
    case '[':
        return bracket_fits(c, pattern);
    case '`':
        if (pattern.size() > 1)
            pattern.remove_prefix(1);
        break;
    default:
        break;
    }
    const bool same = c == pattern.front();
    pattern.remove_prefix(1);
    return same;
}

// Only the last '*' is ever gone back to, which is enough and keeps the cost to text times pattern.
bool one_pattern_fits(std::string_view text, std::string_view pattern)
{
    std::string_view star_text, star_pattern;
    bool have_star = false;
    for (;;) {
        if (!pattern.empty() && pattern.front() == '*') {
            pattern.remove_prefix(1);
            star_text = text;
            star_pattern = pattern;
            have_star = true;
            continue;
        }
        if (text.empty() && pattern.empty())
            return true;
        if (!text.empty() && !pattern.empty()) {
            std::string_view rest = pattern;
            if (element_fits(text.front(), rest)) {
                text.remove_prefix(1);
                pattern = rest;
                continue;
            }
        }
        if (!have_star || star_text.empty())
            return false;
        star_text.remove_prefix(1);
        text = star_text;
        pattern = star_pattern;
    }
}

// The next of several patterns split by commas outside brackets and not quoted.
std::string_view take_pattern(std::string_view& patterns)
{
    bool in_bracket = false;
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        const char c = patterns[i];
        if (c == '`')
            ++i;
        else if (c == '[' && patterns.find(']', i) != std::string_view::npos)
            in_bracket = true;
        else if (c == ']')
            in_bracket = false;
        else if (c == ',' && !in_bracket) {
            const std::string_view one = patterns.substr(0, i);
            patterns.remove_prefix(i + 1);
            return one;
        }
    }
    const std::string_view one = patterns;
    patterns = {};
    return one;
}

} // namespace

} // namespace host

using namespace host;

int acutPrintf(const char* format, ...)
{
    va_list values;
    va_start(values, format);
    history(formatted(format, values));
    va_end(values);
    return RTNORM;
}

int acedPrompt(const char* text)
{
    history(text ? text : "");
    return RTNORM;
}

int acdbFail(const char* text)
{
    history_line(text ? text : "");
    return RTNORM;
}

void acrx_abort(const char* format, ...)
{
    va_list values;
    va_start(values, format);
    const std::string text = formatted(format, values);
    va_end(values);
    complain(text);
    std::abort();
}

int acutWcMatch(const char* text, const char* pattern)
{
    if (!text || !pattern)
        return RTERROR;
    std::string_view patterns = pattern;
    do {
        std::string_view one = take_pattern(patterns);
        const bool negated = one.starts_with('~');
        if (negated)
            one.remove_prefix(1);
        if (one_pattern_fits(text, one) != negated)
            return RTNORM;
    } while (!patterns.empty());
    return RTERROR;
}
