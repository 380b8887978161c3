#include "engine/model/saving.h"
#include "engine/project/kinds.h"
#include "tests/engine/project/building.h"

#include <pedflux/agent_actions.h>
#include <pedflux/avatars.h>

#include <memory>
#include <string>

namespace pedflux::engine {
namespace {

std::shared_ptr<Avatar> avatar(Project& project, std::string const& name) {
    return project.CreateAvatarFromPreset(name, Project::GetAvatarPresets().front());
}

/// The avatar that the profile's initial action gives to people.
std::string given_by(Project& project, Profile& profile) {
    auto const action = std::dynamic_pointer_cast<SetAvatarAction>(profile.GetInitialActionCopy());
    return action ? project.GetObject(action->GetAvatar())->GetName() : "";
}

TEST(Profiles, KeepAndGiveCopiesOfTheirInitialAction) {
    auto const project = Project::Create();
    auto const profile = project->CreateProfile("Guards");
    auto const uniform = avatar(*project, "Uniform");
    auto const plain = avatar(*project, "Plain clothes");
    EXPECT_FALSE(profile->HasInitialAction());
    EXPECT_FALSE(profile->GetInitialActionCopy());

    auto const action = std::make_shared<SetAvatarAction>(uniform->GetId());
    profile->SetInitialAction(action);
    action->SetAvatar(plain->GetId());
    std::static_pointer_cast<SetAvatarAction>(profile->GetInitialActionCopy())->SetAvatar(plain->GetId());
    EXPECT_EQ(given_by(*project, *profile), "Uniform");
    Project opened(from_text(to_text(document_of(*project)), object_kinds()));
    EXPECT_EQ(given_by(opened, *opened.GetProfile("Guards")), "Uniform");

    EXPECT_REFUSED(project->RemoveAndDeleteObject("Uniform"), "others refer to it: Profile 'Guards'");
    EXPECT_REFUSED(profile->SetInitialAction(std::make_shared<SetAvatarAction>(profile->GetId())),
                   "Profile 'Guards': initialAction");
    EXPECT_EQ(given_by(*project, *profile), "Uniform");
    profile->SetInitialAction(nullptr);
    EXPECT_FALSE(profile->HasInitialAction());
    project->RemoveAndDeleteObject("Uniform");
    project->Close();
}

TEST(Profiles, ReferToTheirAvatar) {
    auto const project = Project::Create();
    auto const profile = project->CreateProfile("Guards");
    auto const uniform = avatar(*project, "Uniform");
    EXPECT_REFUSED(profile->SetAvatar(profile->GetId()),
                   "Profile 'Guards': avatar must be the identifier of an avatar, not that of Profile 'Guards'");
    EXPECT_REFUSED(profile->SetAvatar(GlobalId()), "not the invalid identifier");
    EXPECT_REFUSED(profile->SetNetwork(uniform->GetId()), "network must be the identifier of a network, not that of");
    EXPECT_FALSE(profile->HasAvatar() || profile->HasNetwork());
    profile->SetAvatar(uniform->GetId());
    EXPECT_TRUE(profile->GetAvatar().InternalEquals(uniform->GetId()));
    EXPECT_REFUSED(project->RemoveAndDeleteObject("Uniform"), "Profile 'Guards'");
    profile->ClearAvatar();
    project->RemoveAndDeleteObject("Uniform");
    EXPECT_FALSE(profile->HasAvatar());
    project->Close();
}

}  // namespace
}  // namespace pedflux::engine
