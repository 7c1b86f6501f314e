/// @file
/// From the bytes of a module's field to text. All texts end with a terminator, and no image can fill one up.
#pragma once

#include "FieldTables.h"
#include "ModuleImage.h"

/// Where a decode function writes; it begins as the empty text. Every text that the tables and fields can give fits.
using DecodedText = char[256];

/// Value of a hexadecimal text, modulo 2^32. White space is skipped; any other character that is no digit makes the
/// whole 0, as do a null and an empty text.
int hexToDec(const char* text);

/// 0 when the texts are equal without regard to case; -1 for a null text or a differing character, -2 for an empty
/// first and -3 for an empty second text, -4 for differing lengths.
int striscmp(const char* first, const char* second);

/// Removes `character` from the end of the text as long as it stands there; a text of that character alone keeps its
/// first. Like the next two it leaves the text alone when that is null or the character 0, and gives it back.
char* RTrimBuf(char* text, char character);
/// Deletes every `character`, wherever it stands: no left trim, and its callers rely on that.
char* LTrimBuf(char* text, char character);
/// `RTrimBuf`, then `LTrimBuf`.
char* TrimBuf(char* text, char character);

/// The field table of the module's family.
const FieldTable* FieldTableOf(const ModuleImage& image);

/// The first field of that name, without regard to case; the end row when there is none, never null. A heading has
/// no place in the image and is not found.
const FieldTable* GetFieldEntry(const ModuleImage& image, const char* name);

/// Decodes the field at `offset` as a `type`, whatever its row says: a bit code by `table`, or hexadecimal digits
/// without separators, or text. No such field, or another type: the destination keeps what it holds.
const char* GetFieldData(const ModuleImage& image, const SfpTable* table, eFieldType type, VX_UINT16 offset,
                         DecodedText& destination);

/// The field's bytes as text, padding included; "0" when it has no letter and no digit.
const char* GetAsciiData(const FieldTable* row, const ModuleImage& image, DecodedText& destination);

/// The byte at `index` of the field as two hexadecimal digits. `count` has no effect.
const char* GetByteData(const FieldTable* row, const ModuleImage& image, VX_UINT16 count, VX_UINT16 index,
                        char* destination, std::size_t size);

/// The texts of the rows whose mask has a bit in the field's byte, each with a blank behind it. Commas inside the
/// texts are removed. Without `accumulate` only the last such row counts. A byte of 0, and a row without a place in
/// the image, give the empty text; with no such row the destination keeps what it holds, but for its commas. Null
/// for a null row.
const char* GetBitDataCodeTable(const FieldTable* row, const ModuleImage& image, const SfpTable* table,
                                DecodedText& destination, bool accumulate);
/// The same for the rows whose value is the byte.
const char* GetByteDataCodeTable(const FieldTable* row, const ModuleImage& image, const SfpTable* table,
                                 DecodedText& destination, bool accumulate);

/// 1 when the named byte has a bit of the mask set, else 0.
int GetSFPTableBitValue(const ModuleImage& image, const char* name, VX_UINT8 mask);

/// Value of the field's last byte alone, also where the field has two: clients know the figures that rest on it.
int GetRawData(const FieldTable* row, const ModuleImage& image);
/// `GetRawData` of the named field.
int getDataValue(const ModuleImage& image, const char* name);
