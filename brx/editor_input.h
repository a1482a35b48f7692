#pragma once

#include <cstddef>

#include "brx/resbuf.h"

/// Input from the user. All calls show a prompt and wait; they answer `RTNORM` with a value, `RTNONE` for a
/// bare Enter, `RTKWORD` for a keyword that `acedGetInput` then gives, `RTCAN` when the user cancelled, and
/// `RTERROR` for a failure. A null prompt shows the host's own. Points are drawing units of the world,
/// angles are radians.

/// What the next call of input refuses and takes.
enum AcedInitGetBits : int {
  RSG_NONULL = 1,   // a bare Enter
  RSG_NOZERO = 2,   // the value zero
  RSG_NONEG = 4,    // values below zero
  RSG_NOLIM = 8,    // points outside the limits are taken
  RSG_DASH = 32,    // rubber bands are dashed
  RSG_2D = 64,      // distances are measured in the plane
  RSG_OTHER = 128,  // any text is taken, and answered as a keyword
};
/// Rules of the next input call alone. Keywords stand apart by blanks. Their capitals are what must be
/// typed ("eXit"), or what follows a comma ("EXIT,X"). Behind a word that begins with "_" stand the names
/// that the program gets ("Ja Nein _Yes No").
int acedInitGet(int bits, const ACHAR* keywords);
/// The keyword or text behind an answer of `RTKWORD`. `size` counts characters with the final NUL.
int acedGetInput(ACHAR* text, size_t size);
template <size_t size>
int acedGetInput(ACHAR (&text)[size]) {
  return acedGetInput(text, size);
}

int acedGetPoint(const ads_point base, const ACHAR* prompt, ads_point result);
/// The corner opposite to `base`, at the base's height.
int acedGetCorner(const ads_point base, const ACHAR* prompt, ads_point result);
/// Without a base, a point asks for a second one.
int acedGetDist(const ads_point base, const ACHAR* prompt, ads_real* result);
/// Counted from the drawing's base angle.
int acedGetAngle(const ads_point base, const ACHAR* prompt, ads_real* result);
/// Counted from +X, whatever the drawing's base angle is.
int acedGetOrient(const ads_point base, const ACHAR* prompt, ads_real* result);
int acedGetReal(const ACHAR* prompt, ads_real* result);
int acedGetInt(const ACHAR* prompt, int* result);
/// With `blanks` a blank belongs to the text, else it ends it. Text that has no room is cut.
int acedGetString(bool blanks, const ACHAR* prompt, ACHAR* result, size_t size);
template <size_t size>
int acedGetString(bool blanks, const ACHAR* prompt, ACHAR (&result)[size]) {
  return acedGetString(blanks, prompt, result, size);
}
/// One of the keywords of `acedInitGet`; `RTERROR` when there are none.
int acedGetKword(const ACHAR* prompt, ACHAR* result, size_t size);
template <size_t size>
int acedGetKword(const ACHAR* prompt, ACHAR (&result)[size]) {
  return acedGetKword(prompt, result, size);
}

/// One entity by a pick. A miss gives `RTERROR` with the variable ERRNO 7, a bare Enter ERRNO 52.
int acedEntSel(const ACHAR* prompt, ads_name entity, ads_point pick);
/// The innermost entity under the pick, with the map from its block to the world and the chain of
/// references around it, from the inside out, as a list that the caller frees (null when it is in none).
int acedNEntSelP(const ACHAR* prompt, ads_name entity, ads_point pick, ads_real matrix[4][4], resbuf** chain);

/// Entities chosen by the user or by a rule. `mode` names the ways of choosing ("X", "_C", ":$", …); null or
/// empty lets the user choose. What `first` and `second` point to depends on the mode: points, a chain of
/// point buffers for polygons and fences, an array of two texts for ":$" and keywords for ":K". The set is
/// the caller's, to be freed by `acedSSFree`. `RTERROR` when nothing was chosen, `RTREJ` for a bad request.
int acedSSGet(const ACHAR* mode, const void* first, const void* second, const resbuf* filter, ads_name set);
int acedSSFree(const ads_name set);
int acedSSLength(const ads_name set, Adesk::Int32* length);
/// Entities count from 0, in the order of choosing.
int acedSSName(const ads_name set, Adesk::Int32 index, ads_name entity);
/// Adds to `set`, which becomes `result`; without an entity a new empty set, without a set a new one.
int acedSSAdd(const ads_name entity, const ads_name set, ads_name result);
int acedSSDel(const ads_name entity, const ads_name set);
/// `RTNORM` when the entity is in the set.
int acedSSMemb(const ads_name entity, const ads_name set);

/// Takes a point, or a direction with `isDirection`, from one coordinate system to another. Systems: a short
/// 0 for the world, 1 for the user's, 2 for the screen, 3 for paper space's screen; an entity, or a normal as
/// a 3D point, for the plane's own.
int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int isDirection, ads_point result);
/// Shows an entity again, or with null the whole drawing, without what was drawn for the moment.
int acedRedraw(const ads_name entity, int mode);

/// True, once, when the user has asked to stop what runs.
bool acedUsrBrk();
