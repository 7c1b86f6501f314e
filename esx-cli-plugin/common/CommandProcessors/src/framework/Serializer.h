/// @file
/// The document written by a command: XML for `esxcli`, or plain text for users.
#pragma once

#include "TavuString.h"
#include "vexapi.h"

/// Base of every command node. Commands make the same calls in the same order for both formats; `begin_output` sets
/// the format and `end_output` clears it. Texts are written verbatim in both formats, unless the environment variable
/// `ORFC_XML` is "strict" when an XML document begins: then they are escaped, after any truncation. Every operation
/// writes to the current standard output, and returns 0, or `RC_INVALID_FORMAT` if no format is set.
class Serializer {
public:
    enum eOutputFormat : VX_UINT32 { FORMAT_NONE = 0, FORMAT_XML = 1, FORMAT_TEXT = 2 };
    enum eListType : VX_UINT32 { LIST_STRING = 0, LIST_INT = 1, LIST_BOOL = 2, LIST_STRUCTURE = 3 };
    enum eIntType : VX_UINT32 { INT_S32 = 0, INT_U32 = 1, INT_S64 = 2, INT_U64 = 3, INT_HEX = 4 };

    Serializer() = default;
    Serializer(Serializer&&) = default;
    virtual ~Serializer() = default;

    /// An invalid format is kept, so that subsequent calls fail too.
    virtual VX_UINT32 begin_output(eOutputFormat format);
    virtual VX_UINT32 end_output();
    /// For an unknown type, writes nothing and returns `RC_INVALID_FORMAT`.
    virtual VX_UINT32 begin_list_output(eListType type);
    virtual VX_UINT32 end_list_output();
    virtual VX_UINT32 output_list(const std::vector<TavuString>& values);
    virtual VX_UINT32 output_list(const std::vector<int>& values);
    virtual VX_UINT32 output_list(const std::vector<bool>& values);
    virtual VX_UINT32 begin_struct_output(const char* name);
    virtual VX_UINT32 end_struct_output();
    virtual VX_UINT32 begin_field_output(const char* name);
    virtual VX_UINT32 end_field_output();
    virtual VX_UINT32 output_field(const char* name, const char* value);
    /// `type` selects how many bits of `value` are printed, and how. For an unknown type, the field is printed
    /// without a number and, in text, without a line end.
    virtual VX_UINT32 output_field(const char* name, unsigned long long value, eIntType type);
    virtual VX_UINT32 output_field(const char* name, bool value);
    /// Formats like `printf` and truncates the text to `length` bytes. Returns `RC_NO_MEMORY` if that many bytes
    /// can't be allocated. Use `output_text` for untrusted text.
    virtual VX_UINT32 output_string(unsigned length, const char* format, ...) __attribute__((format(printf, 3, 4)));

    VX_UINT32 output_field(const char* name, const TavuString& value) { return output_field(name, value.c_str()); }

    /// Formats a number like `output_field`; empty for an unknown type.
    static TavuString NumberText(eOutputFormat format, unsigned long long value, eIntType type);

    /// Writes a whole report. Required: a pair of percent signs prints as one, as in a format; parsers depend on
    /// it. Any other percent sign prints verbatim: text of a module or of the library is never used as a format.
    VX_UINT32 output_text(const char* text);

private:
    class Pieces;

    VX_UINT32 PutField(const char* name, const char* xmlOpen, const char* value, const char* xmlClose) const;
    template <typename Values, typename TextOfValue>
    VX_UINT32 PutList(const char* xmlOpen, const char* xmlClose, const Values& values, TextOfValue textOfValue) const;

    eOutputFormat mFormat = FORMAT_NONE;
    bool mIsStrict = false; ///< texts of the document are escaped
};
