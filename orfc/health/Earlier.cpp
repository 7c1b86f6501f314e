#include "Earlier.h"

#include "Failure.h"
#include "Files.h"
#include "OwnFile.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <unistd.h>

namespace orfc {

using nlohmann::json;

namespace {

constexpr char FORMAT[] = "orfc-readings";
constexpr int VERSION = 1;
constexpr double DAY = 86400; // seconds
constexpr std::size_t KEPT_DAYS = 32;

std::string TextOf(const decoders::ModuleIdentity& identity) {
    return identity.vendor + " " + identity.partNumber + " " + identity.serialNumber;
}

json JsonOf(const Reading& reading) {
    json powers = json::array();
    for (const std::vector<Reading::Power>& lane : reading.powers) {
        json& kept = powers.emplace_back(json::array());
        for (const Reading::Power& power : lane) {
            kept.push_back({power.time, power.dbm});
        }
    }
    return {{"time", reading.time},       {"boot", reading.boot},     {"counters", reading.counters},
            {"targets", reading.targets}, {"module", reading.module}, {"powers", powers}};
}

/// Throws what the JSON library does for a value of another type.
Reading ReadingOf(const json& record) {
    Reading reading;
    record.at("time").get_to(reading.time);
    record.at("boot").get_to(reading.boot);
    record.at("counters").get_to(reading.counters);
    record.at("targets").get_to(reading.targets);
    record.at("module").get_to(reading.module);
    for (const json& lane : record.at("powers")) {
        std::vector<Reading::Power>& kept = reading.powers.emplace_back();
        for (const json& power : lane) {
            kept.push_back({power.at(0).get<double>(), power.at(1).get<double>()});
        }
    }
    return reading;
}

/// What was kept of the powers of the same module, or of one that wasn't read now, with today's unless there is one.
void KeepPowers(const Reading& earlier, Reading& now) {
    if (now.module.empty()) {
        now.module = earlier.module;
        now.powers = earlier.powers;
        return;
    }
    if (earlier.module != now.module) {
        return;
    }
    now.powers.resize(std::max(now.powers.size(), earlier.powers.size()));
    for (std::size_t number = 0; number < earlier.powers.size(); ++number) {
        std::vector<Reading::Power> lane = earlier.powers[number];
        std::erase_if(lane, [&](const Reading::Power& power) { return power.time > now.time; });
        const bool hasToday = !lane.empty() && std::floor(lane.back().time / DAY) == std::floor(now.time / DAY);
        if (!hasToday) {
            lane.insert(lane.end(), now.powers[number].begin(), now.powers[number].end());
        }
        if (lane.size() > KEPT_DAYS) {
            lane.erase(lane.begin(), lane.end() - KEPT_DAYS);
        }
        now.powers[number] = std::move(lane);
    }
}

/// For the user alone, whatever the umask.
void MakeFolder(const std::filesystem::path& folder) {
    std::filesystem::path made;
    for (const std::filesystem::path& part : folder) {
        made /= part;
        mkdir(made.c_str(), S_IRWXU); // whatever fails shows when the file is made
    }
}

} // namespace

Readings ReadingsOf(const Host& host, double time, const std::string& boot) {
    Readings readings;
    for (const Port& port : host.ports) {
        if (port.counters.empty() && port.transceiver.state == ModuleState::UNREAD) {
            continue;
        }
        Reading& reading = readings[port.identifier];
        reading.time = time;
        reading.boot = boot;
        reading.counters = port.counters;
        reading.module = port.transceiver.state == ModuleState::READ ? TextOf(port.transceiver.identity) : "";
        for (const Lane& lane : port.transceiver.lanes) {
            const auto dbm = lane.transmitPower ? decoders::DbmOf(lane.transmitPower->value) : std::nullopt;
            reading.powers.emplace_back(dbm ? std::vector<Reading::Power>{{time, dbm->value}}
                                            : std::vector<Reading::Power>());
        }
    }
    for (const Target& target : host.targets) {
        if (const auto reading = readings.find(target.port->identifier); reading != readings.end()) {
            Counters& kept = reading->second.targets[target.identifier];
            std::copy_if(target.counters.begin(), target.counters.end(), std::inserter(kept, kept.end()),
                         [](const auto& counter) { return counter.second != 0; });
        }
    }
    return readings;
}

std::uint64_t IncreaseOf(std::uint64_t before, std::uint64_t now, bool wasReset) {
    constexpr std::uint64_t END = std::uint64_t{1} << 32;
    constexpr std::uint64_t NEAR = END >> 4; // one that wrapped was near the end and is near the beginning
    if (wasReset) {
        return now;
    }
    if (now >= before) {
        return now - before;
    }
    return before < END && before >= END - NEAR && now < NEAR ? END - before + now : now;
}

bool WasReset(const Reading& before, const Reading& now) {
    if (!before.boot.empty() && !now.boot.empty() && before.boot != now.boot) {
        return true;
    }
    constexpr char SINCE_RESET[] = "seconds_since_last_reset";
    const auto old = before.counters.find(SINCE_RESET);
    const auto fresh = now.counters.find(SINCE_RESET);
    return old != before.counters.end() && fresh != now.counters.end() && fresh->second < old->second;
}

double CurrentTime() {
    return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count();
}

std::string CurrentBoot() {
    std::ifstream file("/proc/sys/kernel/random/boot_id");
    std::string id;
    std::getline(file, id);
    return id;
}

std::string UsualStateFile(const std::string& name) {
    if (geteuid() == 0) {
        return "/var/lib/orfc/" + name;
    }
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    if (state != nullptr && *state == '/') {
        return state + ("/orfc/" + name);
    }
    return home != nullptr && *home == '/' ? home + ("/.local/state/orfc/" + name) : std::string();
}

Readings LoadReadings(const std::string& file) {
    const std::string content = ReadOwnText(file);
    if (content.empty()) {
        return {};
    }
    try {
        const json root = json::parse(content);
        if (root.at("format") != FORMAT) {
            throw Failure(file + ": is no file of readings");
        }
        Readings readings;
        if (root.at("version") == VERSION) {
            for (const auto& [port, record] : root.at("ports").items()) {
                readings.emplace(port, ReadingOf(record));
            }
        }
        return readings;
    } catch (const json::exception&) {
        throw Failure(file + ": is no file of readings");
    }
}

void SaveReadings(const std::string& file, const Readings& readings) {
    MakeFolder(std::filesystem::path(file).parent_path());
    const LockedFile locked(file);
    Readings kept = LoadReadings(file);
    double time = 0;
    for (const auto& [port, now] : readings) {
        Reading merged = now;
        if (const auto earlier = kept.find(port); earlier != kept.end()) {
            KeepPowers(earlier->second, merged);
        }
        kept[port] = std::move(merged);
        time = std::max(time, now.time);
    }
    std::erase_if(kept, [time](const auto& port) { return port.second.time < time - KEPT_DAYS * DAY; });
    json ports = json::object();
    for (const auto& [port, reading] : kept) {
        ports[port] = JsonOf(reading);
    }
    const std::string content = json({{"format", FORMAT}, {"version", VERSION}, {"ports", ports}})
                                    .dump(-1, ' ', true, json::error_handler_t::replace);
    if (content.size() > MAX_OWN_FILE) {
        throw Failure(file + ": the readings are too many");
    }
    locked.Replace(content + "\n", S_IRUSR | S_IWUSR);
}

} // namespace orfc
