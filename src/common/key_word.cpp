#include "common/key_word.h"

int ask_key_word(const char* words, const char* prompt, char (&word)[ADS_TEXT_SIZE])
{
    word[0] = '\0';
    acedInitGet(0, words);
    const int status = acedGetKword(prompt, word);
    if (status != RTNORM)
        word[0] = '\0';
    return status;
}
