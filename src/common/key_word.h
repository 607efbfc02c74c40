// key_word.h: questions that are answered by a key word.
#pragma once

#include "hostapi/ads.h"

// Asks for one of `words` (as acedInitGet takes them; an empty answer is allowed) and answers the prompt's
// status. `word` is the whole key word, empty unless the status is RTNORM.
int ask_key_word(const char* words, const char* prompt, char (&word)[ADS_TEXT_SIZE]);
