#include "acquisition/Protocol.h"

#include "acquisition/SetupFile.h"
#include "base/PathText.h"
#include "base/PlainText.h"
#include "platform/AtomicFile.h"
#include "platform/InputFile.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <utility>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

/// Far more than all settings take; what is larger is something else and need not fill the memory.
constexpr std::uint64_t mostBytes = 65536;

Json toJson(const OwnSettings& own) {
    Json json = Json::object();
    for (const OwnSetting& setting : own)
        if (setting.differs())
            std::visit([&](const auto* value) { json[std::string(setting.name)] = *value; }, setting.value);
    return json;
}

/// As a message shows it.
std::string quoted(const std::string& text) {
    return '"' + printable(text, LineBreaks::Escape) + '"';
}

/// Takes over a value of the file; gives what is wrong with it, in a sentence.
std::optional<std::string> take(const OwnSetting& setting, const Json& value) {
    const std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    const bool rightType = std::holds_alternative<bool*>(setting.value) ? value.is_boolean() : value.is_number();
    if (!rightType)
        return std::string(setting.name) +
               (std::holds_alternative<bool*>(setting.value) ? " must be true or false, not "
                                                             : " must be a number, not ") +
               quoted(text) + ".";
    if (const Result<void> set = setting.set(text); !set) return set.error().text;
    return std::nullopt;
}

/// Takes over what can be; a sentence for each entry that cannot.
std::vector<std::string> takeAll(const OwnSettings& own, const Json& json) {
    std::vector<std::string> problems;
    for (const auto& [name, value] : json.items()) {
        const auto setting = std::ranges::find(own, name, &OwnSetting::name);
        if (setting == own.end())
            problems.push_back("There is no setting named " + quoted(name) + ".");
        else if (auto problem = take(*setting, value))
            problems.push_back(std::move(*problem));
    }
    return problems;
}

Result<void> damaged(const fs::path& path, const std::string& what) {
    return Error{ErrorKind::BadFormat,
                 pathText(path) + ": " + what + " What could not be read has its default; save the setup anew."};
}

Result<void> removeOld(const fs::path& path) {
    std::error_code problem;
    if (fs::is_directory(path, problem)) return {}; // none of ours
    fs::remove(path, problem);
    if (!problem) return {};
    return Error{ErrorKind::WriteFailed, pathText(path) + " could not be removed (" + problem.message() +
                                             "). Delete it, or its settings will be loaded with the setup."};
}

} // namespace

fs::path ownSettingsFile(const fs::path& setupFile) {
    fs::path path = setupFile;
    path += ".json";
    return path;
}

Result<void> writeProtocol(const fs::path& setupFile, const AcqSettings& settings, const OwnSettings& own) {
    const fs::path path = ownSettingsFile(setupFile);
    std::optional<AtomicFile> file;
    if (std::ranges::any_of(own, &OwnSetting::differs)) {
        Result<AtomicFile> created = AtomicFile::create(path);
        if (!created) return created.error();
        file = std::move(created).value();
        const std::string text = toJson(own).dump(2) + '\n';
        if (auto written = file->write(std::as_bytes(std::span(text))); !written) return written;
    }
    if (auto written = writeSetupFile(setupFile, settings); !written) return written;
    return file ? file->commit() : removeOld(path);
}

Result<void> readOwnSettings(const fs::path& setupFile, const OwnSettings& own) {
    std::ranges::for_each(own, &OwnSetting::reset);
    const fs::path path = ownSettingsFile(setupFile);
    Result<InputFile> file = openForReading(path);
    if (!file && file.error().kind == ErrorKind::NotFound) return {};
    if (!file) return file.error();
    if (file.value().bytes > mostBytes) return damaged(path, "The file is too large to hold settings.");
    const Json json = Json::parse(file.value().stream, nullptr, false);
    if (!json.is_object()) return damaged(path, "The file holds no JSON object, or is damaged.");

    const std::vector<std::string> problems = takeAll(own, json);
    if (problems.empty()) return {};
    constexpr std::size_t mostTold = 5;
    std::string told;
    for (const std::string& problem : std::span(problems).first(std::min(problems.size(), mostTold)))
        told += (told.empty() ? "" : " ") + problem;
    if (problems.size() > mostTold) told += " And " + std::to_string(problems.size() - mostTold) + " more.";
    return damaged(path, told);
}

} // namespace tavex2
