/// @file
/// The fields of a structure as rows: one table for both output and document shape.
#pragma once

#include "Document.h"

/// A field of a structure that shows a `State`: a text or a number.
template <typename State> struct FieldRow {
    const char* label;
    TavuString (*text)(const State& state);
    VX_UINT32 (*number)(const State& state) = nullptr;
};
template <typename State> constexpr FieldRow<State> NumberField(const char* label, VX_UINT32 (*number)(const State&)) {
    return {label, nullptr, number};
}

template <typename State>
void WriteFields(Document& document, std::span<const FieldRow<State>> rows, const State& state) {
    for (const FieldRow<State>& row : rows) {
        if (row.number != nullptr) {
            document.Field(row.label, row.number(state), Serializer::INT_U32);
        } else {
            document.Field(row.label, row.text(state));
        }
    }
}

/// Same fields as a document shape.
template <typename State, std::size_t N>
consteval std::array<DocumentField, N> FieldsOf(const FieldRow<State> (&rows)[N]) {
    std::array<DocumentField, N> fields{};
    for (std::size_t at = 0; at < N; ++at) {
        fields[at] = {rows[at].label, rows[at].number != nullptr ? FieldType::NUMBER : FieldType::TEXT};
    }
    return fields;
}
