// ads.h: what the module calls of its host by plain functions. Strings are Windows-1252.
//
// Unless said otherwise a function answers RTNORM when it did what it was asked and RTERROR
// when not. "New" strings and lists belong to the caller: acad_free, acutRelRb.
#pragma once

#include <cstddef>

#include "hostapi/adsdef.h"

extern "C" {

// ---- memory ----------------------------------------------------------------------------
// As malloc, realloc and free, on the host's heap, which counts its live blocks.
void* acad_malloc(std::size_t size);
void* acad_realloc(void* block, std::size_t size);
void acad_free(void* block);

// ---- lists and strings -----------------------------------------------------------------
// Space for a text or key word that the host writes: acedGetString, acedGetKword, acedGetInput.
constexpr int ADS_TEXT_SIZE = 256;

resbuf* acutNewRb(int restype);
// List of (type, value) pairs up to 0 or RTNONE. RTSHORT int, RTLONG long, RTREAL double, RTSTR text,
// RTPOINT and RT3DPOINT ads_point, RTENAME and RTPICKS ads_name; RTLB, RTLE, RTDOTE, RTNIL and RTT
// take no value. Codes below 5000 are groups: the value is of the code's type. Null on a bad code.
resbuf* acutBuildList(int restype, ...);
int acutRelRb(resbuf* list);
int acutNewString(const char* text, char** copy);
// Wild-card match by the rules of selection filters (# @ . * ? ~ [...] ` ,). RTNORM on a match.
int acutWcMatch(const char* text, const char* pattern);

// ---- printing and screens ----------------------------------------------------------------
int acutPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));
int acedPrompt(const char* text);
int acedAlert(const char* text);
// A fault of a program, told on the command line.
int acdbFail(const char* text);
[[noreturn]] void acrx_abort(const char* format, ...) __attribute__((format(printf, 1, 2)));
int acedTextScr();
int acedGraphScr();
int acedTextPage();
int acedRedraw(const ads_name entity, int mode);
int acedUpdateDisplay();
// Temporary vector in display colour `color` (-1: the complement of what it crosses).
int acedGrDraw(const ads_point from, const ads_point to, int color, int highlight);
int acedMenuCmd(const char* text);
int acedHelp(const char* file, const char* topic, int command);
// Pixel position of a world point in viewport `viewport`; 0 when it has none.
int acedCoordFromWorldToPixel(int viewport, const ads_point world, int* x, int* y);

// ---- geometry and number text --------------------------------------------------------------
ads_real acutDistance(const ads_point a, const ads_point b);
// Direction from a to b in the plane, radians, 0 to two pi.
ads_real acutAngle(const ads_point a, const ads_point b);
// The point at `distance` in direction `angle`; z is kept.
void acutPolar(const ads_point from, ads_real angle, ads_real distance, ads_point out);
// Crossing of two lines; with `on_segments` non-zero it must lie on both. RTERROR: none.
int acdbInters(const ads_point a1, const ads_point a2, const ads_point b1, const ads_point b2, int on_segments,
               ads_point out);
// Text of an angle (radians) or a length. `unit` and `precision` as AUNITS, AUPREC, LUNITS, LUPREC;
// -1 takes the drawing's own. `out` has room for ADS_TEXT_SIZE bytes.
int acdbAngToS(ads_real value, int unit, int precision, char* out);
int acdbRToS(ads_real value, int unit, int precision, char* out);
int acdbAngToF(const char* text, int unit, ads_real* out);
int acdbDisToF(const char* text, int unit, ads_real* out);

// ---- AutoLISP --------------------------------------------------------------------------------
// Defines an external function of the current drawing by name and code; 0 when that fails.
int acedDefun(const char* name, int code);
int acedUndef(const char* name, int code);
// Code of the function that is being called, negative when none is.
int acedGetFunCode();
// New list of the arguments of the call.
resbuf* acedGetArgs();
int acedRetNil();
int acedRetT();
int acedRetVoid();
int acedRetInt(int value);
int acedRetReal(ads_real value);
int acedRetStr(const char* text);
int acedRetPoint(const ads_point point);
int acedRetName(const ads_name name, int type);
int acedRetList(const resbuf* list);
int acedRetVal(const resbuf* value);
// Value of a LISP variable as a new list, null for nil.
int acedGetSym(const char* name, resbuf** value);
int acedPutSym(const char* name, const resbuf* value);
// Calls a LISP function by name: the list's first node is the name, the rest the arguments.
int acedInvoke(const resbuf* call, resbuf** result);

// ---- host variables and files ---------------------------------------------------------------------
// `value` is filled; a string in it is new.
int acedGetVar(const char* name, resbuf* value);
int acedSetVar(const char* name, const resbuf* value);
// Full path of a file on the search path into `out` (room for ADS_PATH_SIZE).
constexpr int ADS_PATH_SIZE = 1024;
int acedFindFile(const char* name, char* out);
// File dialog. flags: 1 a new file to save, 4 any extension, 8 path returned only through the
// search path, 32 no question about replacing. `result` is filled with a new string, RTSTR.
int acedGetFileD(const char* title, const char* default_path, const char* extension, int flags, resbuf* result);

// ---- user input ------------------------------------------------------------------------------------
// Rules and key words of the next input call only. Key words: capitals are the abbreviation.
int acedInitGet(int rules, const char* key_words);
int acedGetInt(const char* prompt, int* value);
int acedGetReal(const char* prompt, ads_real* value);
int acedGetDist(const ads_point base, const char* prompt, ads_real* value);
int acedGetAngle(const ads_point base, const char* prompt, ads_real* value);
int acedGetOrient(const ads_point base, const char* prompt, ads_real* value);
int acedGetPoint(const ads_point base, const char* prompt, ads_point value);
int acedGetCorner(const ads_point base, const char* prompt, ads_point value);
int acedGetKword(const char* prompt, char* word);
// with_blanks non-zero: blanks are part of the text, only Enter ends it.
int acedGetString(int with_blanks, const char* prompt, char* text);
// The key word, or the text under RSG_OTHER, of an input call that answered RTKWORD; empty after any other
// answer.
int acedGetInput(char* word);
// RTERROR with ERRNO 7 when the pick hit nothing, 52 on an empty answer.
int acedEntSel(const char* prompt, ads_name name, ads_point picked);
int acedNEntSelP(const char* prompt, ads_name name, ads_point point, int use_point, ads_matrix to_world,
                 resbuf** containers);
// Drags a set along with the pointer; `follow` fills the matrix for a pointer position, RTERROR from it
// ends the drag with that status. Nothing of the drawing is changed.
int acedDragGen(const ads_name set, const char* prompt, int cursor,
                int (*follow)(ads_point point, ads_matrix matrix), ads_point dropped);
// 1 when the user pressed the break key since the last call.
int acedUsrBrk();
// Host commands: (type, value) pairs up to 0 or RTNONE; RTSTR "" is Enter.
int acedCommand(int restype, ...);
int acedCmd(const resbuf* list);
int acedOsnap(const ads_point point, const char* modes, ads_point out);

// ---- selection sets -----------------------------------------------------------------------------------
// `mode` null asks the user, else X, W, C, P, L, I, A, CP, WP, F with `point1`, `point2` as they need
// (a resbuf list of points for CP, WP, F). The new set goes back with acedSSFree.
int acedSSGet(const char* mode, const void* point1, const void* point2, const resbuf* filter, ads_name set);
int acedSSFree(const ads_name set);
int acedSSLength(const ads_name set, std::int32_t* length);
int acedSSName(const ads_name set, std::int32_t index, ads_name entity);
// Null `set`: a new set. Null `entity`: a new empty set.
int acedSSAdd(const ads_name entity, const ads_name set, ads_name out);
int acedSSDel(const ads_name entity, const ads_name set);
int acedSSMemb(const ads_name entity, const ads_name set);

// ---- drawing objects -----------------------------------------------------------------------------------
// New group list of an entity, beginning with -1; extended data only by acdbEntGetX.
resbuf* acdbEntGet(const ads_name entity);
// `applications`: chain of RTSTR names, wild cards allowed; null as acdbEntGet.
resbuf* acdbEntGetX(const ads_name entity, const resbuf* applications);
int acdbEntMake(const resbuf* list);
int acdbEntMakeX(const resbuf* list, ads_name out);
int acdbEntMod(const resbuf* list);
// Erases, or brings back what was erased.
int acdbEntDel(const ads_name entity);
int acdbEntUpd(const ads_name entity);
// The object behind `entity`, sub-objects too; null: the first of the drawing.
int acdbEntNext(const ads_name entity, ads_name out);
int acdbEntLast(ads_name out);
int acdbHandEnt(const char* handle, ads_name out);
int acdbRegApp(const char* name);
// New list of a table record, null when there is none. `set_next` moves acdbTblNext behind it.
resbuf* acdbTblSearch(const char* table, const char* name, int set_next);
resbuf* acdbTblNext(const char* table, int rewind);
int acdbTblObjName(const char* table, const char* name, ads_name out);
int acdbNamedObjDict(ads_name out);
resbuf* acdbDictSearch(const ads_name dictionary, const char* key, int set_next);
resbuf* acdbDictNext(const ads_name dictionary, int rewind);
}
