/// @file
/// From the bytes of a module's field to text. All texts end with a terminator, and no image can fill one up.
#pragma once

#include "FieldTables.h"
#include "ModuleImage.h"

/// Where a decode function writes; it begins as the empty text. Every text that the tables and fields can give fits.
using DecodedText = char[256];

/// Removes `character` from the end of the text as long as it stands there; a text of that character alone keeps its
/// first. Like the next two it leaves the text alone when that is null or the character 0, and gives it back.
char* RTrimBuf(char* text, char character);
/// Deletes every `character`, wherever it stands: no left trim, and its callers rely on that.
char* LTrimBuf(char* text, char character);
/// `RTrimBuf`, then `LTrimBuf`.
char* TrimBuf(char* text, char character);

/// The field table of the module's family.
const FieldTable* FieldTableOf(const ModuleImage& image);

/// The first field at `offset`; the end row when there is none, or when it lies outside the image, never null.
const FieldTable* FieldAt(const ModuleImage& image, std::size_t offset);

/// The field's bytes as text, padding included; "0" when it has no letter and no digit.
const char* GetAsciiData(const FieldTable* row, const ModuleImage& image, DecodedText& destination);

/// The texts of the rows whose mask has a bit in `byte`, each with a blank behind it. Commas inside the texts are
/// removed. Without `accumulate` only the last such row counts. A byte of 0 gives the empty text; with no such row the
/// destination keeps what it holds, but for its commas.
const char* GetBitDataCodeTable(VX_UINT8 byte, const SfpTable* table, DecodedText& destination, bool accumulate);
/// The same for the rows whose value is the byte.
const char* GetByteDataCodeTable(VX_UINT8 byte, const SfpTable* table, DecodedText& destination, bool accumulate);
