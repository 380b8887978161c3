#include "engine/model/saving.h"

#include "engine/model/codec.h"
#include "engine/model/document.h"
#include "engine/model/files.h"
#include "engine/project/kinds.h"
#include "engine/scene/scene_states.h"
#include "tests/engine/project/building.h"
#include "tests/engine/project/filled_document.h"

#include <csignal>
#include <filesystem>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <sys/resource.h>

namespace pedflux::engine {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

Json file_of(Project const& project) { return Json::parse(to_text(document_of(project))); }

TEST(EveryKind, HasAFieldOfEveryNameThatIsNotAsByDefault) {
    auto const document = filled_document();
    auto const fields = fields_of_kinds();
    EXPECT_EQ(document->objects().size(), object_kinds().size());
    EXPECT_EQ(fields.size(), object_kinds().size());
    for (auto const& object : document->objects()) {
        Json fresh = Json::object();
        Json filled = Json::object();
        write_fields(fields_in(*object->kind->make()), fresh);
        write_fields(fields_in(*object), filled);
        for (auto const& name : fields.at(std::string(object->kind->name))) {
            ASSERT_TRUE(filled.contains(name)) << title_of(*object) << ": " << name;
            EXPECT_NE(filled[name], fresh.value(name, Json())) << title_of(*object) << ": " << name;
        }
    }
}

TEST(EveryKind, OpensAndCopiesEqualInEveryField) {
    auto const document = filled_document();
    auto const text = to_text(*document);
    auto const opened = from_text(text, object_kinds());
    EXPECT_THAT(differences(*document, *opened), IsEmpty());
    EXPECT_THAT(opened->open_warnings, IsEmpty());
    EXPECT_EQ(to_text(*opened), text);
    EXPECT_THAT(differences(*document, *document->copy()), IsEmpty());
    for (auto const& object : opened->objects()) {
        auto const handle = opened->handle_of(*object);
        EXPECT_EQ(handle->GetTypeId(), static_cast<int>(object->kind->type));
        EXPECT_EQ(handle->GetName(), object->name);
    }
}

TEST(EveryKind, IsRemovedOnlyWhileNoOtherObjectRefersToIt) {
    auto const document = filled_document();
    int held = 0;
    for (auto const& object : document->objects()) {
        SCOPED_TRACE(title_of(*object));
        std::set<std::string> referrers;
        for (auto const& reference : document->references_to(object->id)) {
            if (reference.from == nullptr) {
                referrers.insert("the project's settings");
            } else if (reference.from != object.get()) {
                referrers.insert(title_of(*reference.from));
            }
        }
        auto const twin = document->copy();
        ObjectState& victim = *twin->find(object->id);
        if (referrers.empty()) {
            twin->remove(victim);
            EXPECT_EQ(twin->find(object->id), nullptr);
            EXPECT_THAT(differences(*twin, *from_text(to_text(*twin), object_kinds())), IsEmpty());
            continue;
        }
        ++held;
        for (auto const& referrer : referrers) EXPECT_REFUSED(twin->remove(victim), referrer);
        EXPECT_THAT(differences(*document, *twin), IsEmpty());
    }
    EXPECT_GT(held, 10);
}

TEST(Saving, WhatWasSavedOpensEqualInEveryField) {
    TemporaryDirectory const directory;
    auto const project = full_project();
    project->Save(directory.file("a.json"));
    auto const opened = Project::Open(directory.file("a.json"));

    EXPECT_THAT(differences(document_of(*project), document_of(*opened)), IsEmpty());
    EXPECT_THAT(opened->GetWarningsFromOpen(), IsEmpty());
    EXPECT_EQ(opened->GetWorkingDirectory(), std::filesystem::canonical(directory.path()));
    opened->Save(directory.file("b.json"));
    EXPECT_EQ(contents_of(directory.file("a.json")), contents_of(directory.file("b.json")));
    for (auto const& object : project->GetObjects()) {
        auto const twin = opened->GetObject(object->GetId());
        ASSERT_TRUE(twin);
        EXPECT_EQ(twin->GetName(), object->GetName());
        EXPECT_EQ(twin->GetTypeId(), object->GetTypeId());
    }
}

TEST(Saving, DifferencesAreFound) {
    auto const project = full_project();
    auto const& document = document_of(*project);
    auto const twin = document.copy();
    EXPECT_THAT(differences(document, *twin), IsEmpty());
    twin->objects<StairState>().front()->speed_limit->up = 0.61;
    twin->settings.frame_rate = 9;
    auto const found = differences(document, *twin);
    EXPECT_THAT(found, ::testing::UnorderedElementsAre(HasSubstr("localAgentMaxSpeed/up"), HasSubstr("frameRate")));
}

TEST(Saving, ACopySharesNothingThatChanges) {
    auto const project = full_project();
    auto& document = document_of(*project);
    auto const before = to_text(document);
    auto const twin = document.copy();
    project->GetStair("Stair")->SetLocalAgentMaxSpeedUpAndDown(1, 1);
    project->GetBarrier("Pillar")->Translate({1, 0, 0});
    project->GetProfile("Commuters")->SetRadius(0.3);
    EXPECT_EQ(to_text(*twin), before);
    EXPECT_EQ(twin->find("Stair")->document, twin.get());
}

TEST(Saving, UnknownMembersAndKindsAreKeptWithAWarning) {
    TemporaryDirectory const directory;
    auto const path = directory.file("a.json");
    Json file = file_of(*full_project());
    Json const stranger = {
        {"kind", "Teleporter"}, {"id", GlobalId::Generate().GetString()}, {"name", "Beam"}, {"power", 9}};
    file["author"] = "someone";
    file["objects"][0]["texture"] = {{"file", "marble.png"}};
    file["objects"].push_back(stranger);
    write(path, file.dump());

    auto const opened = Project::Open(path);
    std::vector<std::string> warnings;
    for (auto issue : opened->GetWarningsFromOpen()) warnings.push_back(issue.GetSummary());
    EXPECT_THAT(warnings, ElementsAre(HasSubstr("'author'"), HasSubstr("'texture'"), HasSubstr("Teleporter 'Beam'")));
    EXPECT_FALSE(opened->HasObject("Beam"));
    EXPECT_REFUSED(opened->CreateProfile("Beam"), "'Beam' is taken");
    EXPECT_EQ(nlohmann::json(file_of(*opened)), nlohmann::json(file));
}

TEST(Saving, AnObjectThatAnUnknownOneMentionsStays) {
    auto const project = full_project();
    Json file = file_of(*project);
    auto const hidden = project->CreatePerimeter("Mentioned");
    file = file_of(*project);
    file["objects"].push_back({{"kind", "Teleporter"},
                               {"id", GlobalId::Generate().GetString()},
                               {"name", "Beam"},
                               {"target", hidden->GetId().GetString()}});
    auto const opened = from_text(file.dump(), object_kinds());
    EXPECT_REFUSED(opened->remove(*opened->find("Mentioned")), "Teleporter 'Beam'");
}

/// A way to spoil a project's file, and what the refusal says about it.
struct Damage {
    std::string text;
    std::string message;
};

template <class Change>
std::string with(Json file, Change const& change) {
    change(file);
    return file.dump();
}

TEST(Saving, DamagedForeignAndNewerFilesAreRefusedWithTheReason) {
    Json const file = file_of(*full_project());
    auto const index_of = [&](std::string const& kind) {
        std::size_t index = 0;
        while (file["objects"].at(index)["kind"] != kind) ++index;
        return index;
    };
    auto const stair = index_of("Stair");
    auto const bank = index_of("RouteBank");
    auto const collection = index_of("Collection");
    auto const someone = GlobalId::Generate().GetString();
    std::string const whole = file.dump();
    std::vector<Damage> const damages{
        {"", "not JSON"},
        {whole.substr(0, whole.size() / 2), "not JSON"},
        {whole + "x", "not JSON"},
        {"[1, 2]", "not a pedflux project"},
        {"{\"format\": \"other\"}", "not a pedflux project"},
        {std::string(100'000, '['), "deeper than 64"},
        {"{\"format\": \"pedflux project\", \"format\": \"pedflux project\"}", "'format' occurs twice"},
        {with(file, [](Json& f) { f["version"] = 2; }), "newer release"},
        {with(file, [](Json& f) { f["version"] = "1"; }), "no version"},
        {with(file, [](Json& f) { f.erase("objects"); }), "lacks the member 'objects'"},
        {with(file, [](Json& f) { f["objects"] = 3; }), "objects must be a list"},
        {with(file, [](Json& f) { f["objects"][3] = nullptr; }), "objects.3 must be an object"},
        {with(file, [](Json& f) { f["objects"][3].erase("id"); }), "objects.3 lacks the member 'id'"},
        {with(file, [](Json& f) { f["objects"][3]["id"] = "12"; }), "objects.3.id"},
        {with(file, [](Json& f) { f["objects"][3]["id"] = f["objects"][2]["id"]; }),
         "already an object with the identifier"},
        {with(file, [](Json& f) { f["objects"][3]["name"] = f["objects"][2]["name"]; }), "is taken by"},
        {with(file, [](Json& f) { f["objects"][3]["name"] = "\n"; }), "control character"},
        {with(file, [](Json& f) { f["settings"]["frameRate"] = 0; }), "the project: frameRate must be at least 1"},
        {with(file, [](Json& f) { f["settings"]["frameRate"] = 4.5; }), "settings.frameRate must be a whole number"},
        {with(file, [](Json& f) { f["settings"]["randomSeed"] = 5'000'000'000; }), "must be a whole number of 32 bits"},
        {with(file, [&](Json& f) { f["objects"][stair]["direction"] = "UP"; }),
         "Stair 'Stair'.direction must be one of"},
        {with(file, [&](Json& f) { f["objects"][stair]["direction"] = nullptr; }), "must be one of"},
        {with(file, [&](Json& f) { f["objects"][stair]["gated"] = 1; }), "gated must be true or false"},
        {with(file, [&](Json& f) { f["objects"][stair]["localAgentBodyRadius"] = -1; }),
         "Stair 'Stair': localAgentBodyRadius must be greater than 0 and at most 2 m, not -1"},
        {with(file, [&](Json& f) { f["objects"][stair]["perimeters"] = {someone}; }),
         "which no object of the project has"},
        {with(file, [&](Json& f) { f["objects"][stair]["perimeters"] = Json::array({f["objects"][0]["id"]}); }),
         "a perimeter, not that of Floor"},
        {with(file, [&](Json& f) { f["objects"][stair]["priority"]["direction"] = "BOTH_WAYS"; }), "one direction"},
        {with(file, [&](Json& f) { f["objects"][stair].erase("geometry"); }), "geometry must be a mesh, not empty"},
        {with(file, [&](Json& f) { f["objects"][stair]["geometry"]["faces"][1] = 99; }), "Stair 'Stair'.geometry"},
        {with(file, [&](Json& f) { f["objects"][stair]["geometry"]["faces"].push_back(0); }), "multiple of 3"},
        {with(file, [&](Json& f) { f["objects"][stair]["geometry"]["vertices"][1] = "a"; }),
         "vertices.1 must be a number"},
        {with(file,
              [&](Json& f) {
                  f["objects"][stair]["geometry"] = {{"kind", "sphere"}};
              }),
         "a mesh, polyline or rectangle"},
        {with(file, [&](Json& f) { f["objects"][stair]["entranceDelayDistribution"]["kind"] = "Odd"; }),
         "kind is one of ConstantDistribution"},
        {with(file, [&](Json& f) { f["objects"][stair]["entranceDelayDistribution"]["min"] = 100; }),
         "a valid distribution"},
        {with(file,
              [&](Json& f) {
                  f["objects"][stair]["color"] = {1, 2, 3, 4};
              }),
         "Stair 'Stair'.color"},
        {with(file, [&](Json& f) { f["objects"][collection]["weights"] = {1.0}; }), "2 weights, one for each item"},
        {with(file, [&](Json& f) { f["objects"][bank]["items"][1] = f["objects"][bank]["items"][0]; }),
         "different objects"},
        {with(file,
              [&](Json& f) {
                  Json copy = f["objects"][bank];
                  copy["id"] = someone;
                  copy["name"] = "Second";
                  f["objects"].push_back(copy);
              }),
         "in no other bank"},
    };
    for (auto const& [text, message] : damages) {
        SCOPED_TRACE(message);
        EXPECT_REFUSED(from_text(text, object_kinds()), message);
    }
}

/// Spoils a file in a place: bytes or whole lines are taken out, doubled, swapped or changed.
std::string mutated(std::string text, std::mt19937& random) {
    auto const below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    std::size_t const place = below(text.size());
    switch (below(6)) {
        case 0:
            text[place] = static_cast<char>(below(256));
            break;
        case 1:
            text.erase(place, 1 + below(40));
            break;
        case 2:
            text.insert(place, text.substr(below(text.size()), 1 + below(40)));
            break;
        case 3:
            text.resize(place);
            break;
        case 4:
            text[place] = "0123456789-.eE\"[]{},:ntf"[below(24)];
            break;
        default: {
            auto const line = text.rfind('\n', place) + 1;
            auto const end = text.find('\n', place);
            text.erase(line, (end == std::string::npos ? text.size() : end) - line);
        }
    }
    return text;
}

/// A value in a project's file is taken out, or replaced by another one of the file or by one that seldom fits.
std::string with_odd_value(Json file, std::mt19937& random) {
    auto const below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    // Goes down from the root and may stop on the way, so that whole objects and lists are hit as well as numbers.
    auto const place = [&] {
        Json::json_pointer path;
        for (Json const* value = &file; value->is_structured() && !value->empty();) {
            if (!path.empty() && below(8) == 0) break;
            auto member = value->begin();
            std::advance(member, static_cast<std::ptrdiff_t>(below(value->size())));
            if (value->is_object()) {
                path /= member.key();
            } else {
                path /= static_cast<std::size_t>(member - value->begin());
            }
            value = &*member;
        }
        return path;
    };
    auto const hit = place();
    Json const odd[] = {nullptr,
                        true,
                        -1,
                        0,
                        1e308,
                        2147483648,
                        "",
                        "x",
                        Json::array(),
                        Json::array({-1, "x"}),
                        Json::object(),
                        Json::object({{"kind", "x"}}),
                        GlobalId::Generate().GetString(),
                        GlobalId().GetString(),
                        file[place()]};
    if (below(8) == 0) {
        auto& parent = file[hit.parent_pointer()];
        if (parent.is_object()) {
            parent.erase(hit.back());
        } else {
            parent.erase(std::stoul(hit.back()));
        }
    } else {
        file[hit] = odd[below(std::size(odd))];
    }
    return file.dump();
}

/// Opens a text. What opens is whole: it can be written, and opens again as the same.
/// @return whether it was refused
bool is_refused(std::string const& text) {
    try {
        auto const opened = from_text(text, object_kinds());
        auto const again = from_text(to_text(*opened), object_kinds());
        EXPECT_THAT(differences(*opened, *again), IsEmpty()) << text;
        return false;
    } catch (Exception const& failure) {
        EXPECT_FALSE(failure.GetMessage().empty());
        EXPECT_LT(failure.GetMessage().size(), 4000U);
        return true;
    }
}

TEST(Saving, SpoiltFilesNeverOpenAsHalfAProject) {
    auto const original = to_text(document_of(*full_project()));
    auto const every_kind = Json::parse(to_text(*filled_document()));
    std::mt19937 random(7);
    constexpr int COUNT = 1500;
    int refused_texts = 0;
    int refused_values = 0;
    for (int i = 0; i < COUNT; ++i) {
        auto text = original;
        for (auto edits = 1 + random() % 3; edits > 0; --edits) text = mutated(std::move(text), random);
        refused_texts += is_refused(text) ? 1 : 0;
        refused_values += is_refused(with_odd_value(every_kind, random)) ? 1 : 0;
    }
    RecordProperty("refused texts", refused_texts);
    RecordProperty("refused values", refused_values);
    for (int const refused : {refused_texts, refused_values}) {
        EXPECT_GT(refused, COUNT / 4);
        EXPECT_LT(refused, COUNT);
    }
}

TEST(Saving, OpeningASpoiltFileChangesNeitherItNorTheCurrentProject) {
    TemporaryDirectory const directory;
    auto const path = directory.file("a.json");
    auto const current = full_project();
    auto const original = to_text(document_of(*current));
    std::mt19937 random(11);
    for (int i = 0; i < 100; ++i) {
        auto const text = mutated(original, random);
        write(path, text);
        auto const before = Project::GetCurrentProject();
        try {
            Project::Open(path)->Close();
        } catch (Exception const& failure) {
            EXPECT_THAT(failure.GetMessage(), HasSubstr("cannot open the project '" + path + "'"));
            EXPECT_EQ(Project::GetCurrentProject(), before);
        }
        EXPECT_EQ(contents_of(path), text);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.path()), {}), 1);
    }
    EXPECT_EQ(to_text(document_of(*current)), original);
    current->Close();
}

TEST(Saving, AFailedOpenLeavesTheCurrentProject) {
    auto const current = Project::Create();
    EXPECT_REFUSED(Project::Open("/nowhere/at all.json"), "cannot open the project '/nowhere/at all.json'");
    EXPECT_REFUSED(Project::Open(""), "empty");
    EXPECT_REFUSED(Project::Open("/tmp"), "not a file");
    EXPECT_EQ(Project::GetCurrentProject(), current);
    current->Close();
}

/// Runs something while no file may grow beyond a size, which fails a save half-way as a full disk does.
template <class Run>
void with_largest_file(rlim_t bytes, Run const& run) {
    auto* const before_signal = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    rlimit const limited{bytes, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limited);
    run();
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, before_signal);
}

TEST(Saving, AFailedSaveLeavesTheOldFileAndNoOther) {
    TemporaryDirectory const directory;
    auto const path = directory.file("a.json");
    auto const project = full_project();
    project->Save(path);
    auto const before = contents_of(path);
    project->SetFrameRate(20);

    std::filesystem::create_directory(directory.file("folder"));
    EXPECT_REFUSED(project->Save(directory.file("folder")), "cannot write '" + directory.file("folder"));
    EXPECT_REFUSED(project->Save(directory.file("missing/a.json")), "missing/a.json");
    EXPECT_REFUSED(project->Save(std::string("a\0b", 3)), "zero byte");
    with_largest_file(4096,
                      [&] { EXPECT_REFUSED(project->Save(path), "cannot write '" + path + "': File too large"); });
    EXPECT_EQ(contents_of(path), before);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory.path()), {}), 2);
}

TEST(Saving, ALinkAndItsPermissionsStay) {
    TemporaryDirectory const directory;
    auto const project = full_project();
    project->Save(directory.file("a.json"));
    std::filesystem::permissions(directory.file("a.json"), std::filesystem::perms{0640});
    std::filesystem::create_symlink("a.json", directory.file("link.json"));
    project->SetFrameRate(20);
    project->Save(directory.file("link.json"));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.file("link.json")));
    EXPECT_EQ(std::filesystem::status(directory.file("a.json")).permissions(), std::filesystem::perms{0640});
    EXPECT_EQ(Project::Open(directory.file("a.json"))->GetFrameRate(), 20);
}

}  // namespace
}  // namespace pedflux::engine
