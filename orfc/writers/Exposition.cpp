#include "Exposition.h"

#include "Utf8.h"

#include <cmath>

namespace orfc {

namespace {

/// Control characters, newlines among them, are replaced; what is left to escape are these.
std::string Escaped(const std::string& text, std::string_view special) {
    std::string escaped;
    for (const char c : PrintableText(text)) {
        escaped += special.find(c) != std::string_view::npos ? std::string{'\\', c} : std::string{c};
    }
    return escaped;
}

/// With all digits that the value has, and none that it hasn't.
std::string NumberText(double value) {
    char text[40];
    for (const int digits : {15, 17}) {
        std::snprintf(text, sizeof text, "%.*g", digits, value);
        if (std::strtod(text, nullptr) == value) {
            break;
        }
    }
    return text;
}

} // namespace

void Exposition::Add(const std::string& name, Type type, const std::string& help, const Labels& labels,
                     std::optional<double> value) {
    if (!value || !std::isfinite(*value)) {
        return;
    }
    const auto [place, isNew] = mPlaces.emplace(name, mFamilies.size());
    if (isNew) {
        const char* const typeName = type == Type::COUNTER ? " counter\n" : " gauge\n";
        mFamilies.push_back(
            {name, "# HELP " + name + " " + Escaped(help, "\\") + "\n# TYPE " + name + typeName, {}, {}});
    }
    std::string text;
    for (const auto& [label, content] : labels) {
        if (!content.empty()) {
            text += (text.empty() ? "{" : ",") + std::string(label) + "=\"" + Escaped(content, "\"\\") + "\"";
        }
    }
    text += text.empty() ? "" : "}";
    Family& family = mFamilies[place->second];
    if (family.known.insert(text).second) {
        family.lines.push_back(name + text + " " + NumberText(*value) + "\n");
    }
}

std::string Exposition::Text() const {
    std::string text;
    for (const Family& family : mFamilies) {
        text += family.head;
        for (const std::string& line : family.lines) {
            text += line;
        }
    }
    return text;
}

} // namespace orfc
