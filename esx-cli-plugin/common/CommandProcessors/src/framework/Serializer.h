/// @file
/// The document that a command writes: XML for `esxcli`, or plain text for a person.
#pragma once

#include "TavuString.h"
#include "vexapi.h"

/// Base of every command node. A command makes the same calls in the same order whatever the format; the
/// format is fixed by `begin_output` and forgotten by `end_output`. Nothing is escaped: a value goes into
/// either format as it stands. Every operation gives 0, or `RC_INVALID_FORMAT` when no format is set, and
/// writes to the standard output of the moment.
class Serializer {
public:
    enum eOutputFormat : VX_UINT32 { FORMAT_NONE = 0, FORMAT_XML = 1, FORMAT_TEXT = 2 };
    enum eListType : VX_UINT32 { LIST_STRING = 0, LIST_INT = 1, LIST_BOOL = 2, LIST_STRUCTURE = 3 };
    enum eIntType : VX_UINT32 { INT_S32 = 0, INT_U32 = 1, INT_S64 = 2, INT_U64 = 3, INT_HEX = 4 };

    Serializer() = default;
    Serializer(Serializer&&) = default;
    virtual ~Serializer() = default;

    /// A value that is no format is kept, so that the calls that follow fail too.
    virtual VX_UINT32 begin_output(eOutputFormat format);
    virtual VX_UINT32 end_output();
    /// An unknown type writes nothing and gives `RC_INVALID_FORMAT`.
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
    /// `type` says how many bits of `value` are printed, and how. An unknown type prints the field without
    /// a number: in text the label then stands without a line end.
    virtual VX_UINT32 output_field(const char* name, unsigned long long value, eIntType type);
    virtual VX_UINT32 output_field(const char* name, bool value);
    /// Formats as `printf` does and cuts the text at `length` bytes. `RC_NO_MEMORY` when that many bytes
    /// are not to be had. A text from outside goes through `output_text` instead.
    virtual VX_UINT32 output_string(unsigned length, const char* format, ...) __attribute__((format(printf, 3, 4)));

    VX_UINT32 output_field(const char* name, const TavuString& value) { return output_field(name, value.c_str()); }

    /// A number as `output_field` prints it in this format; empty for an unknown type.
    static TavuString NumberText(eOutputFormat format, unsigned long long value, eIntType type);

    /// Writes a whole report. A pair of percent signs prints as one, as in a format: clients know reports
    /// so. Every other percent sign prints as it stands: no text of a module or of the library is ever
    /// taken as a conversion.
    VX_UINT32 output_text(const char* text);

private:
    bool IsFormat() const { return mFormat == FORMAT_XML || mFormat == FORMAT_TEXT; }
    /// Writes `xml` or `text` by the present format; null writes nothing.
    VX_UINT32 Put(const char* xml, const char* text) const;
    /// Writes opening, name and closing of the present format.
    VX_UINT32 PutNamed(const char* xmlOpen, const char* xmlClose, const char* name, const char* textClose) const;
    template <typename Values, typename TextOfValue>
    VX_UINT32 PutList(const char* xmlType, const Values& values, TextOfValue textOfValue) const;

    eOutputFormat mFormat = FORMAT_NONE;
};
