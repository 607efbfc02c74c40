// A guest that only asks: points, words, numbers and texts.
#include "guest.h"

namespace
{

// (p:point): the point, or the status.
int ask_point(const resbuf*)
{
    ads_point at = {0, 0, 0};
    const int status = acedGetPoint(nullptr, "\nWhere: ", at);
    return status == RTNORM ? acedRetPoint(at) : acedRetInt(status);
}

// (p:from): a second point, seen from a first one.
int ask_from(const resbuf*)
{
    ads_point base = {10, 10, 0}, at = {0, 0, 0};
    const int status = acedGetPoint(base, "\nTo: ", at);
    return status == RTNORM ? acedRetPoint(at) : acedRetInt(status);
}

// (p:word): a key word out of two, no empty answer.
int ask_word(const resbuf*)
{
    char word[ADS_TEXT_SIZE] = "";
    acedInitGet(RSG_NONULL, "Yes No");
    const int status = acedGetKword("\nSure? ", word);
    return status == RTNORM ? acedRetStr(word) : acedRetInt(status);
}

// (p:point-or-word): a key word in place of a point.
int ask_either(const resbuf*)
{
    ads_point at = {0, 0, 0};
    acedInitGet(0, "Undo eXit");
    const int status = acedGetPoint(nullptr, "\nNext: ", at);
    if (status != RTKWORD)
        return status == RTNORM ? acedRetPoint(at) : acedRetInt(status);
    char word[ADS_TEXT_SIZE] = "";
    return acedGetInput(word) == RTNORM ? acedRetStr(word) : acedRetNil();
}

// (p:numbers): an integer above zero, a real, and their sum.
int ask_numbers(const resbuf*)
{
    int whole = 0;
    double real = 0;
    acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, nullptr);
    int status = acedGetInt("\nHow many: ", &whole);
    if (status == RTNORM)
        status = acedGetReal("\nHow much: ", &real);
    return status == RTNORM ? acedRetReal(whole + real) : acedRetInt(status);
}

// (p:text): with blanks.
int ask_text(const resbuf*)
{
    char text[ADS_TEXT_SIZE] = "";
    const int status = acedGetString(1, "\nName: ", text);
    return status == RTNORM ? acedRetStr(text) : acedRetInt(status);
}

constexpr guest_function FUNCTIONS[] = {
    {"p:point", ask_point},          {"p:from", ask_from},       {"p:word", ask_word},
    {"p:point-or-word", ask_either}, {"p:numbers", ask_numbers}, {"p:text", ask_text},
};

} // namespace

GUEST_EXPORT int acrxEntryPoint(int message, void* packet)
{
    return guest_entry(FUNCTIONS, message, packet, nullptr, nullptr);
}
