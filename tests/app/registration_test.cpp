#include "app/program.h"
#include "support/registry_sandbox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tessara {
namespace {

using test::RegistrySandbox;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char kModule[] = TESSARA_MODULE_PATH;

TEST(RegistrationCommands, TakeTheModuleInAndOut)
{
    const RegistrySandbox sandbox;
    ProgramRun run = RunTessara({"classes"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "No class is registered.\n");
    run = RunTessara({"register"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(run.output, HasSubstr(std::string(kModule) + " (version 6.5.0.0)"));
    EXPECT_THAT(run.output, HasSubstr("for this user, in " + sandbox.UserStore()));
    run = RunTessara({"classes"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    for (const char* part : {"CoTessara Class\n", "{C10E608B-ED92-4A87-941F-011785494F43}\n", "Tessara.CoTessara.1\n",
                             kModule, "Loads       yes\n"})
        EXPECT_THAT(run.output, HasSubstr(part));
    EXPECT_THAT(run.output, Not(HasSubstr("Used")));
    EXPECT_THAT(RunTessara({"unregister"}).output, HasSubstr("is no longer registered for this user"));
    EXPECT_THAT(RunTessara({"unregister"}).output, HasSubstr("was not registered for this user"));
    EXPECT_EQ(RunTessara({"classes"}).output, "No class is registered.\n");
}

TEST(RegistrationCommands, KnowTheUserFromTheMachine)
{
    const RegistrySandbox sandbox;
    const std::string copy = sandbox.Write(sandbox.Path("lib/Tessara.so"), tessara::test::ReadBytes(kModule));
    EXPECT_EQ(RunTessara({"register", copy}).exitCode, 0);
    const ProgramRun run = RunTessara({"register", "--system"});
    EXPECT_THAT(run.output, HasSubstr("for all users, in " + sandbox.MachineStore()));
    EXPECT_THAT(run.output, HasSubstr("Another registration of CoTessara Class comes before it"));
    EXPECT_THAT(RunTessara({"classes"}).output, HasSubstr("Used        no"));
    EXPECT_EQ(RunTessara({"unregister"}).exitCode, 0);
    const std::string left = RunTessara({"classes"}).output;
    EXPECT_THAT(left, HasSubstr("for all users"));
    EXPECT_THAT(left, Not(HasSubstr("for this user")));
}

TEST(RegistrationCommands, SayInOneSentenceWhatIsWrong)
{
    const RegistrySandbox sandbox;
    const std::string copy = sandbox.Write(sandbox.Path("Tessara.so"), tessara::test::ReadBytes(kModule));
    EXPECT_EQ(RunTessara({"register", copy}).exitCode, 0);
    std::filesystem::remove(copy);
    ProgramRun run = RunTessara({"classes"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.output, HasSubstr("Loads       no: The module " + copy + " isn't there."));
    EXPECT_EQ(run.errors, "tessara: 1 of the registered classes can't be loaded.\n");

    sandbox.Write(sandbox.UserStore(), "damaged");
    for (const char* command : {"register", "unregister", "classes"}) {
        run = RunTessara({command});
        EXPECT_EQ(run.exitCode, 1) << command;
        EXPECT_THAT(run.errors, StartsWith("tessara: The class registry " + sandbox.UserStore() + " is damaged"));
        EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    }
    EXPECT_EQ(tessara::test::ReadBytes(sandbox.UserStore()), "damaged");
    run = RunTessara({"register", copy});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.errors, HasSubstr("The module " + copy + " isn't there"));
}

}  // namespace
}  // namespace tessara
