/// @file
/// Conversion of a module's fields to text. All texts are terminated, and none can overflow, whatever the image.
#pragma once

#include "FieldTables.h"
#include "ModuleImage.h"

/// Output buffer of a decode function, initially empty. Large enough for every text of the tables and fields.
using DecodedText = char[256];

/// Removes trailing occurrences of `character`; a text of that character alone keeps its first. This and the next
/// two functions return the text, unchanged if it is null or the character is 0.
char* RTrimBuf(char* text, char character);
/// Deletes every `character`, anywhere in the text, despite the name. Callers rely on it.
char* LTrimBuf(char* text, char character);
/// `RTrimBuf`, then `LTrimBuf`.
char* TrimBuf(char* text, char character);

/// The field table of the module's family.
const FieldTable* FieldTableOf(const ModuleImage& image);

/// The first field at `offset`; the end row, never null, if there is none or it is outside the image.
const FieldTable* FieldAt(const ModuleImage& image, std::size_t offset);

/// The field's bytes as text, including padding; "0" if it has no letter or digit.
const char* GetAsciiData(const FieldTable* row, const ModuleImage& image, DecodedText& destination);

/// The texts of the rows whose mask has a bit in `byte`, each followed by a blank. Commas inside the texts are
/// removed. Without `accumulate`, only the last such row counts. A byte of 0 yields the empty text; without a
/// matching row, the destination is unchanged except for its commas.
const char* GetBitDataCodeTable(VX_UINT8 byte, const SfpTable* table, DecodedText& destination, bool accumulate);
/// Same for the rows whose value equals the byte.
const char* GetByteDataCodeTable(VX_UINT8 byte, const SfpTable* table, DecodedText& destination, bool accumulate);
