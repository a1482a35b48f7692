#pragma once

#include <cstdint>

#include "platform/com/owners.h"
#include "zarbo/frame/lisp_args.h"

/// Values between result buffers and the engine's variants and arrays of variants.

/// Text before each record of a row set, and the texts that carry list structure to the engine.
inline const wchar_t* const newRecordMark = L"*NewRecord*";
inline const wchar_t* const listBeginMark = L"*RTLB*";
inline const wchar_t* const listEndMark = L"*RTLE*";
inline const wchar_t* const listDotMark = L"*RTDOTE*";

/// False for a buffer that no variant stands for. T becomes a boolean but nil an empty variant: they
/// are not opposites to the engine.
bool resbufToVariant(const resbuf& buffer, COleVariant& value);

/// New buffers, the caller's. `trim` cuts white space at the end of texts; without it only a lone
/// blank is emptied.
resbuf* variantToResbuf(const VARIANT& value, bool trim);

/// A field list as an array of alternating names and values; dotted pairs and a flat list give the
/// same. False, with the result set to nil where a name isn't a text, when anything was not in order.
bool fieldListToArray(ArgCursor& cursor, COleVariant& fields);

/// A list of any shape as a flat array with marks for its structure; false when a value has no
/// variant.
bool treeToArray(ArgCursor& cursor, COleVariant& tree);

/// The engine's answers as the LISP result of the call: a record as a list of dotted pairs, names as a
/// flat list, a row set as a list of records. A variant without an array gives an empty list.
void recordToPairs(const VARIANT& record);
void arrayToList(const VARIANT& names);
/// Uses the rows up: each is freed as it is converted, and all of them before LISP makes its own.
void rowsToList(COleVariant rows);

/// The element at a place counted from 0, as a number; false when there is none.
bool elementToLong(const VARIANT& array, ULONG place, int32_t& value);
