#include "engine/model/document.h"
#include "engine/model/files.h"
#include "engine/model/properties.h"
#include "engine/transport/timetable_states.h"
#include "engine/transport/timetable_tables.h"

#include <pedflux/exception.h>
#include <pedflux/timetables.h>

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>

namespace pedflux {

using engine::get;
using engine::set;
using engine::state_of;
using engine::TimetableFile;
using engine::TimetableState;

namespace {

// A type of file, the member that holds it, and the function that reads it.
struct FileKind {
    TimetableFileType type;
    std::optional<TimetableFile> TimetableState::*file;
    void (*check)(TimetableFile const& file);
};

constexpr FileKind FILE_KINDS[] = {
    {TimetableFileType::REFERENCE_EVENTS, &TimetableState::reference_events,
     [](TimetableFile const& file) { engine::reference_events_in(file); }},
    {TimetableFileType::POPULATIONS, &TimetableState::populations,
     [](TimetableFile const& file) { engine::groups_in(file); }},
    {TimetableFileType::ACTIVITIES, &TimetableState::activities,
     [](TimetableFile const& file) { engine::activities_in(file); }},
};

FileKind const& kind_of(TimetableState const& state, TimetableFileType type) {
    auto const found = std::ranges::find(FILE_KINDS, type, &FileKind::type);
    if (found == std::end(FILE_KINDS)) {
        engine::Subject{owner_of(state), "fileType"}.refuse(
            fmt::format("one of {}", engine::names_of<TimetableFileType>()), std::to_string(static_cast<int>(type)));
    }
    return *found;
}

bool can_delimit(std::string const& delimiter) {
    constexpr std::string_view punctuation = "\t!#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    return delimiter.size() == 1 && punctuation.find(delimiter) != std::string_view::npos;
}

void check_file(TimetableState const& state, FileKind const& kind, TimetableFile const& file) {
    if (!can_delimit(file.delimiter)) {
        auto const byte = file.delimiter.empty()
                              ? "nothing"
                              : "the byte " + std::to_string(static_cast<unsigned char>(file.delimiter[0]));
        engine::Subject{owner_of(state), "delimiter"}.refuse("a tab or a sign such as ',' or ';'", byte);
    }
    try {
        kind.check(file);
    } catch (Exception const& fault) {
        throw Exception(fmt::format("{}: {}", title_of(state), fault.GetMessage()));
    }
}

/// The path of a file: relative to the base path, which is relative to the project's working directory.
std::string path_of(TimetableState& state, std::string const& name) {
    std::filesystem::path const directory = document_of(state).working_directory;
    return (directory / state.base_path.value_or("") / name).string();
}

}  // namespace

namespace engine {

void TimetableState::check(TimetableState const& self) {
    for (auto const& kind : FILE_KINDS) {
        if (auto const& file = self.*kind.file) check_file(self, kind, *file);
    }
}

}  // namespace engine

bool Timetable::HasBasePath() { return has(*this, &TimetableState::base_path); }
std::string Timetable::GetBasePath() { return get(*this, &TimetableState::base_path); }
void Timetable::SetBasePath(std::string path) {
    set(*this, &TimetableState::base_path, path.empty() ? std::nullopt : std::optional(std::move(path)));
}

std::string Timetable::GetData(TimetableFileType type) {
    auto const& state = state_of<TimetableState>(*this);
    return (state.*kind_of(state, type).file).value_or(TimetableFile{}).data;
}
std::string Timetable::GetFileName(TimetableFileType type) {
    auto const& state = state_of<TimetableState>(*this);
    return (state.*kind_of(state, type).file).value_or(TimetableFile{}).name;
}
void Timetable::SetDataFromFile(TimetableFileType type, std::string const& path, char delimiter) {
    auto& state = state_of<TimetableState>(*this);
    auto const& kind = kind_of(state, type);
    TimetableFile file{path, std::string(1, delimiter), engine::read_file(path_of(state, path))};
    check_file(state, kind, file);
    set(*this, kind.file, std::move(file));
}

std::vector<std::string> Timetable::GetReferenceEventNames() {
    auto const& file = state_of<TimetableState>(*this).reference_events;
    std::vector<std::string> names;
    if (!file) return names;
    for (auto& event : engine::reference_events_in(*file)) names.push_back(std::move(event.name));
    return names;
}

GlobalId Timetable::GetDefaultProfile() {
    return state_of<TimetableState>(*this).default_profile.value_or(GlobalId::INVALID);
}
void Timetable::SetDefaultProfile(GlobalId const& profile) {
    set(*this, &TimetableState::default_profile, profile.IsValid() ? std::optional(profile) : std::nullopt);
}

}  // namespace pedflux
