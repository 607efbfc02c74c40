// text.h: plain operations on NUL-terminated text, one byte a character.
#pragma once

// New strings belong to the caller (acad_free); null only when the heap is exhausted.
// str_dup releases `old` and str_append releases `text`; either may be null, as may the other text,
// which then counts as empty.
char* str_dup(char* old, const char* text);
char* str_append(char* text, const char* more);

// In place.
void str_strip_spaces(char* text); // every space
void str_trim(char* text);         // spaces at the head; spaces, CR and LF at the end
void str_upper(char* text);
void str_lower(char* text);

// Order with numbers by value: "PT9" before "PT10". Negative, 0 or positive.
int str_compare_numeric(const char* a, const char* b);
