// user_break.h: the user's wish to stop, kept until the next call from AutoLISP.
#pragma once

// Polled by long loops. A break that was seen once stays seen until user_break_clear.
int user_break();
void user_break_set();
void user_break_clear();
