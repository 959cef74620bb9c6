#include "app/cli/CommandLine.h"

#include "acquisition/AcqFields.h"
#include "app/Version.h"
#include "app/cli/BoardsCommand.h"
#include "app/cli/CollectCommand.h"
#include "app/cli/ConsoleRun.h"
#include "app/cli/ConsoleStream.h"
#include "app/cli/ConvertCommand.h"
#include "app/cli/MeasureCommand.h"
#include "app/cli/OverlayCommand.h"
#include "app/cli/PlotCommand.h"
#include "app/cli/ShowCommand.h"
#include "app/cli/ToneCommand.h"
#include "app/cli/TriggerCommand.h"
#include "base/Decimal.h"
#include "base/FileNames.h"
#include "base/PathText.h"
#include "display/PictureSize.h"
#include "platform/AtomicFile.h"
#include "platform/Interruption.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <limits>
#include <system_error>

namespace tavex2 {

namespace {

namespace fs = std::filesystem;

/// What the window is asked to open is a trial or setup file that exists. Errors: WrongUsage for something that is no
/// such file, NotFound for one that is missing.
Result<void> checkOpenable(const fs::path& file, const std::string& asGiven) {
    const std::string kind = extensionOf(file);
    if (kind != ".set" && kind != ".lmb" && kind != ".plv")
        return Error{ErrorKind::WrongUsage, "'" + asGiven +
                                                "' is neither a command nor a trial file (.lmb, .plv) or setup file "
                                                "(.set). 'tavex2 --help' tells how to use it."};
    std::error_code ignored;
    if (!fs::is_regular_file(file, ignored))
        return Error{ErrorKind::NotFound, "There is no file '" + asGiven + "'. Check its name and folder."};
    return {};
}

/// Prints the error of a command that failed, on one line.
int report(const Result<void>& result, std::ostream& err) {
    if (result) return exitDone;
    err << "tavex2: " << oneLine(result.error().text) << '\n';
    return result.error().kind == ErrorKind::WrongUsage ? exitWrongUsage : exitFailed;
}

/// Runs a command that writes a file: tidies up in its folder first.
template <class Command>
Result<void> writing(const fs::path& file, const Command& command) {
    removeAbandonedFiles(file.has_parent_path() ? file.parent_path() : fs::path("."));
    return command();
}

/// Takes numbers between two limits and nothing else, whatever else may pass for a number; `what` says so.
CLI::Validator number(double lowest, double highest, const std::string& what) {
    return {[=](const std::string& text) {
                double value = 0;
                const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
                const bool taken =
                    error == std::errc() && end == text.data() + text.size() && value >= lowest && value <= highest;
                return taken ? std::string() : "takes " + what + ", not \"" + text + "\"";
            },
            ""};
}

CLI::Validator range(double lowest, double highest, const std::string& unit) {
    return number(lowest, highest, "a number from " + plainNumber(lowest) + " to " + plainNumber(highest) + " " + unit);
}

CLI::Validator time() {
    constexpr double most = std::numeric_limits<double>::max();
    return number(-most, most, "a time in seconds");
}

CLI::Validator level() {
    constexpr double most = std::numeric_limits<float>::max();
    return number(-most, most, "a level in volts");
}

/// Takes what a setting of whole numbers takes.
CLI::Validator wholeNumber(std::string_view setting) {
    const FieldRange range = rangeOf(setting);
    const auto lowest = static_cast<int>(range.lowest);
    const auto highest = static_cast<int>(range.highest);
    return {[=](const std::string& text) {
                int value = 0;
                const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
                const bool taken =
                    error == std::errc() && end == text.data() + text.size() && value >= lowest && value <= highest;
                return taken ? std::string()
                             : "takes a whole number from " + std::to_string(lowest) + " to " +
                                   std::to_string(highest) + ", not \"" + text + "\"";
            },
            ""};
}

/// Takes anything but nothing.
CLI::Validator name() {
    return {[](const std::string& text) { return text.empty() ? std::string("takes a name") : std::string(); }, ""};
}

constexpr double lowestToneHz = 5;
constexpr double highestToneHz = 10000;
constexpr double longestToneSeconds = 3600;

constexpr const char* settingHelp = "A setting by its name, such as Channels=0:3, Rate=1000 or Duration=2; repeatable";
constexpr const char* boardHelp = "A device number, or simulator, simulator:seed=7, recording:PATH";

/// Reads the command line and runs its command.
CommandLineResult parseAndRun(int argc, const char* const* argv, const CommandLineServices& services) {
    CLI::App app{
        "Tavex2, analog data acquisition. Without a command it opens the window, with the files that are named.",
        "tavex2"};
    app.set_version_flag("--version", std::string("tavex2 ") + versionText);
    app.require_subcommand(0, 1);

    WindowRequest window;
    app.add_option("--board", window.board, boardHelp)->type_name("SPEC")->check(name());
    app.add_option("--set", window.settings, settingHelp)->type_name("NAME=VALUE")->allow_extra_args(false);

    std::vector<std::string> files;
    app.add_option("FILE", files, "Open these trial files (.lmb, .plv) or setup files (.set)")->check(name());

    CollectRequest collect;
    CLI::App* collectCommand = app.add_subcommand("collect", "Collect trials and save them");
    collectCommand->add_option("--setup", collect.setup, "Read the settings from this setup file first")
        ->type_name("F.set")
        ->check(name());
    collectCommand->add_option("--set", collect.settings, settingHelp)
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    collectCommand->add_option("--board", collect.board, boardHelp)->type_name("SPEC")->check(name());
    collectCommand->add_option("--trials", collect.trials, "Number of collections, one after the other")
        ->check(CLI::Range(1, 9999));
    collectCommand->add_option("--out", collect.folder, "Folder for the trial files; it must exist")
        ->type_name("DIR")
        ->check(name());
    collectCommand->add_option("--format", collect.formats, "File format: lmb, tab, lma or plv; repeatable")
        ->check(CLI::IsMember({"lmb", "tab", "lma", "plv"}))
        ->allow_extra_args(false);
    collectCommand
        ->add_option("--label", collect.texts.labels,
                     "Label of a channel by its place in the channel list from 0, such as 2=Force; repeatable")
        ->type_name("K=TEXT")
        ->allow_extra_args(false);
    collectCommand->add_option("--unit", collect.texts.units, "Unit of a channel, such as 2=N; repeatable")
        ->type_name("K=TEXT")
        ->allow_extra_args(false);
    collectCommand->add_option("--comment", collect.texts.comments, "A line of comment, up to four; repeatable")
        ->type_name("TEXT")
        ->allow_extra_args(false);
    collectCommand->add_flag("--fast", collect.fast, "Let a simulated or recorded board deliver as fast as it can");
    collectCommand->add_option("--plot", collect.plot, "Draw the last trial into this picture (.png, .pdf, .svg)")
        ->type_name("F.png")
        ->check(name());
    collectCommand->add_flag("--json", collect.json, "Print the result as JSON");

    ConvertRequest convert;
    CLI::App* convertCommand = app.add_subcommand("convert", "Write a trial file in another format");
    convertCommand->add_option("IN", convert.from, "A .lmb or .plv file")->required()->check(name());
    convertCommand->add_option("OUT", convert.to, "The .lmb, .plv, .tab or .lma file to write")
        ->required()
        ->check(name());

    OverlayRequest overlay;
    CLI::App* overlayCommand =
        app.add_subcommand("overlay", "Write the average of up to 16 trials of the same shape as a table");
    overlayCommand->add_option("FILES", overlay.files, "The trial files, and last the .lma file to write")
        ->required()
        ->expected(2, 1000)
        ->check(name());

    MeasureRequest measure;
    CLI::App* measureCommand = app.add_subcommand("measure", "Measure a channel of a trial between two times");
    measureCommand->add_option("FILE", measure.file, "A .lmb or .plv file")->required()->check(name());
    measureCommand->add_option("--channel", measure.channel, "The channel, counted from 0");
    measureCommand->add_option("--from", measure.from, "Start in seconds; without it the first sample")->check(time());
    measureCommand->add_option("--to", measure.to, "End in seconds; without it the last sample")->check(time());
    measureCommand->add_flag("--rectify", measure.rectify, "Measure the absolute values");
    measureCommand->add_flag("--json", measure.json, "Print as JSON");

    TriggerRequest trigger;
    CLI::App* triggerCommand =
        app.add_subcommand("trigger", "Tell where a triggered collection of a trial would start");
    triggerCommand->add_option("FILE", trigger.file, "A .lmb or .plv file")->required()->check(name());
    triggerCommand->add_option("--channel", trigger.channel, "The channel, counted from 0")->required();
    triggerCommand->add_option("--level", trigger.levelVolts, "The trigger's level")
        ->type_name("V")
        ->required()
        ->check(level());
    triggerCommand->add_flag("--falling", trigger.falling, "Wait for a falling slope");
    triggerCommand
        ->add_option("--pretrigger", trigger.preTriggerPercent, "Percentage of the duration kept before the trigger")
        ->type_name("P")
        ->check(wholeNumber("Pretrigger"));
    triggerCommand->add_flag("--json", trigger.json, "Print as JSON");

    ShowRequest show;
    CLI::App* showCommand = app.add_subcommand("show", "Print what a trial file or a setup file holds");
    showCommand->add_option("FILE", show.file, "A .lmb, .plv or .set file")->required()->check(name());
    showCommand->add_flag("--json", show.json, "Print as JSON");

    PlotRequest plot;
    CLI::App* plotCommand = app.add_subcommand("plot", "Draw a trial file into a picture");
    plotCommand->add_option("FILE", plot.file, "A .lmb or .plv file")->required()->check(name());
    plotCommand->add_option("PICTURE", plot.picture, "The .png, .pdf or .svg file to write")->required()->check(name());
    plotCommand->add_option("--width", plot.widthPixels, "Width in pixels")
        ->check(range(smallestPictureWidth, largestPictureSide, "pixels"));
    plotCommand->add_option("--height", plot.heightPixels, "Height in pixels")
        ->check(range(smallestPictureHeight, largestPictureSide, "pixels"));

    ToneRequest tone;
    CLI::App* toneCommand = app.add_subcommand("tone", "Write the stimulus tone as a WAVE file");
    toneCommand->add_option("FILE", tone.file, "The WAVE file to write")->required()->check(name());
    toneCommand->add_option("--frequency", tone.frequencyHz, "Frequency in Hz")
        ->check(range(lowestToneHz, highestToneHz, "Hz"));
    toneCommand->add_option("--duration", tone.durationSeconds, "Length in seconds")
        ->check(range(0, longestToneSeconds, "s"));

    bool boardsAsJson = false;
    CLI::App* boardsCommand = app.add_subcommand("boards", "List the boards that can be used");
    boardsCommand->add_flag("--json", boardsAsJson, "Print as JSON");

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& problem) {
        if (problem.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) { // --help, --version
            app.exit(problem, services.out, services.err);
            return {exitDone, std::nullopt};
        }
        services.err << "tavex2: " << oneLine(problem.what()) << ". 'tavex2 --help' tells how to use it.\n";
        return {exitWrongUsage, std::nullopt};
    }

    const auto commands = app.get_subcommands();
    for (const CLI::Option* option : app.get_options())
        if (!commands.empty() && option->count() > 0) {
            services.err << "tavex2: '" << commands.front()->get_name() << "' does not use " << option->get_name()
                         << " before it. Options stand behind the command that uses them.\n";
            return {exitWrongUsage, std::nullopt};
        }

    if (*collectCommand) return {collectTrials(collect, services), std::nullopt};
    const auto ran = [&services](const Result<void>& result) {
        return CommandLineResult{report(result, services.err), std::nullopt};
    };
    const Interruption interruption;
    if (*convertCommand) return ran(writing(convert.to, [&] { return convertFile(convert, services.err); }));
    if (*overlayCommand) return ran(writing(overlay.files.back(), [&] { return overlayFiles(overlay, services.err); }));
    if (*measureCommand) return ran(measureFile(measure, services.out, services.err));
    if (*triggerCommand) return ran(findCrossings(trigger, services.out, services.err));
    if (*showCommand) return ran(showFile(show, services.out, services.err));
    if (*plotCommand) return ran(writing(plot.picture, [&] { return plotFile(plot, services); }));
    if (*toneCommand) return ran(writing(tone.file, [&] { return writeToneFile(tone); }));
    if (*boardsCommand) return ran(listBoards(boardsAsJson, services));
    for (const std::string& file : files) {
        window.files.push_back(wholePath(pathFromText(file)));
        if (const Result<void> openable = checkOpenable(window.files.back(), file); !openable)
            return ran(openable.error());
    }
    return {exitDone, window};
}

} // namespace

CommandLineResult runCommandLine(int argc, const char* const* argv, const CommandLineServices& services) {
    ConsoleStream out(services.out);
    ConsoleStream err(services.err);
    CommandLineServices onConsole{.out = out,
                                  .err = err,
                                  .store = services.store,
                                  .drawPicture = services.drawPicture,
                                  .openSound = services.openSound};
    CommandLineResult result = parseAndRun(argc, argv, onConsole);
    if (!out.flush() && result.exitCode == exitDone) {
        err << "tavex2: The output could not be written; what reads it is gone, or its disk is full.\n";
        result.exitCode = exitFailed;
    }
    return result;
}

} // namespace tavex2
