// fields.h: pieces of texts: tokens between operators, fields between delimiters.
//
// New strings belong to the caller (acad_free); null when the heap is exhausted, and nothing is changed then.
#pragma once

// What stands behind the last character of `text` that is one of `operators`. `text` is shortened in place
// and ends with that character; without one it is left empty and the whole of it is the token.
char* cut_last_token(char* text, const char* operators);
// What stands before the first character of `text` that is one of `operators`. `text` begins with that
// character then; without one it is left empty.
char* cut_first_token(char* text, const char* operators);

// The character at `position` is a delimiter: what stands behind it, up to the next one of its kind or to the
// end. Empty for a position outside the text.
char* delimited_at(const char* text, int position);

// Occurrences of a delimiter of one or more characters are counted from the left and don't overlap. An empty
// delimiter occurs nowhere.
//
// Index of the last character of the n-th occurrence: -1 for n below 1, 0 for an empty text, the text's length
// when there are fewer than n.
int nth_delimiter(const char* text, const char* delimiter, int n);
int count_delimiters(const char* text, const char* delimiter);
// The n-th field, counted from 1: what stands between the indexes that nth_delimiter gives for n - 1 and n.
// Empty when there is no such field. Of a delimiter of several characters, all but the last one count as the
// end of the field before it.
char* nth_field(const char* text, const char* delimiter, int n);

// `left`, the value by "%f" and `right`, one behind the other.
char* join_value(const char* left, double value, const char* right);
