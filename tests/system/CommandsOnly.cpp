/// The command line without the windows' part of the program, where that has not been built: everything but pictures.

#include "app/cli/CommandLine.h"
#include "platform/Arguments.h"
#include "platform/SystemSound.h"
#include "platform/UserSettings.h"

#include <iostream>

int main(int argc, char** argv) {
    using namespace tavex2;
    const ProgramArguments arguments(argc, argv);
    const std::unique_ptr<SettingsStore> store = userSettings();
    const CommandLineResult asked =
        runCommandLine(arguments.count(), arguments.values(),
                       {.out = std::cout,
                        .err = std::cerr,
                        .store = *store,
                        .drawPicture = [](const TrialPicture&) -> Result<void> {
                            return Error{ErrorKind::InvalidValue, "This program draws no pictures."};
                        },
                        .openSound = systemSound});
    return asked.window ? exitWrongUsage : asked.exitCode;
}
