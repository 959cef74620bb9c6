#include "app/Version.h"
#include "app/cli/CommandLine.h"
#include "app/cli/LastResort.h"
#include "app/ui/WindowProgram.h"
#include "display/ui/TrialPicture.h"
#include "platform/Arguments.h"
#include "platform/Display.h"
#include "platform/StandardStreams.h"
#include "platform/SystemSound.h"
#include "platform/UserSettings.h"

#include <QApplication>

#include <iostream>
#include <memory>

namespace {

using namespace tavex2;

/// Draws without showing a window, so it works where there is no display, nor anything else that a desktop sets up: the
/// toolkit's remarks about that are of no use on a command line.
Result<void> drawPicture(const TrialPicture& picture) {
    if (displayMayBeMissing()) qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    int argc = 1;
    char name[] = "tavex2";
    char* argv[] = {name, nullptr};
    const QApplication application(argc, argv);
    SamplingSettings settings;
    settings.Rate = static_cast<std::int32_t>(picture.rateHz);
    QStringList labels;
    for (const std::string& label : picture.labels)
        labels << QString::fromStdString(label);
    return renderTrial(picture.trial, settings, QString::fromStdString(picture.title), labels, picture.path,
                       picture.widthPixels, picture.heightPixels);
}

int runWindow(const WindowRequest& request, SettingsStore& store, int argc, char** argv) {
    if (!displayAvailable()) {
        std::cerr << "tavex2: There is no display to open a window on. Use 'tavex2 collect' to collect a trial without "
                     "a window; 'tavex2 --help' lists the commands.\n";
        return 1;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tavex2"));
    QApplication::setApplicationVersion(QLatin1String(versionText));
    QApplication::setDesktopFileName(QStringLiteral("io.tavex2.Tavex2"));
    const std::unique_ptr<SoundOutput> sound = systemSound();
    auto program = WindowProgram::create(request, store, *sound);
    if (!program) {
        std::cerr << "tavex2: " << program.error().text << '\n';
        return 1;
    }
    program.value()->show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    keepStandardStreams();
    const auto program = [&] {
        const ProgramArguments arguments(argc, argv);
        const std::unique_ptr<SettingsStore> store = userSettings();
        const CommandLineResult asked = runCommandLine(arguments.count(), arguments.values(),
                                                       {.out = std::cout,
                                                        .err = std::cerr,
                                                        .store = *store,
                                                        .drawPicture = drawPicture,
                                                        .openSound = systemSound});
        return asked.window ? runWindow(*asked.window, *store, argc, argv) : asked.exitCode;
    };
    return withLastResort(program, std::cerr);
}
