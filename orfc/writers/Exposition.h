/// @file
/// Text exposition, as collectors of metrics read it.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orfc {

/// Families of samples, each once with its help and type, in the order of their first samples. Samples without a
/// value aren't written, nor is a second one with the labels of another: collectors drop the whole file, or one of the
/// two without a word.
class Exposition {
public:
    enum class Type { GAUGE, COUNTER };
    using Labels = std::vector<std::pair<const char*, std::string>>;

    /// `name` has the unit at its end, that of a counter "_total". Labels that are empty are left out, bytes that are
    /// no UTF-8 and control characters replaced.
    void Add(const std::string& name, Type type, const std::string& help, const Labels& labels,
             std::optional<double> value);

    /// All of it, with a newline at the end.
    std::string Text() const;

private:
    struct Family {
        std::string name;
        std::string head;
        std::vector<std::string> lines;
        std::set<std::string> known; ///< labels
    };
    std::vector<Family> mFamilies;
    std::map<std::string, std::size_t> mPlaces; ///< of the families, by name
};

} // namespace orfc
