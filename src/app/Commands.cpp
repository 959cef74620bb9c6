#include "app/Commands.h"

namespace tavex2 {

namespace {

using enum Command;
using enum DuringRun;

constexpr bool letsEventsRun = true;

constexpr std::array<CommandRule, commandCount> rules{{
    {OpenTrial, "mnuOpenLumidor2 tbOpen", WhileIdle, letsEventsRun,
     "A trial is being collected. Open the file when it has arrived."},
    {ImportStimulus, "mnuOpen", WhileIdle, letsEventsRun,
     "A trial is being collected. Open the file when it has arrived."},
    {SaveTrial, "mnuSave tbSave", Holds, letsEventsRun},
    {SaveTrialAs, "mnuSaveAs tbSaveAs", Holds, letsEventsRun},
    {ExportTab, "mnuTab", Holds, letsEventsRun},
    {ExportLumidor, "mnuLumidor", Holds, letsEventsRun},
    {ExportStimulus, "mnuPulvo", Holds, letsEventsRun},
    {ExportOverlay, "mnuLumidorO", Holds, letsEventsRun},
    {OpenExplorer, "mnuExplorer"},
    {OpenNotepad, "mnuNotepad"},
    {Exit, "mnuExit"},
    {Undo, "mnuUndo"},
    {EditComments, "mnuEdit_0", Holds, letsEventsRun},
    {EditSetup, "mnuEdit_1 tbConfigure", WhileIdle, letsEventsRun,
     "A trial is being collected. Open the setup when it has arrived."},
    {EditLabels, "mnuEdit_2", Holds, letsEventsRun},
    {ShowLastTrial, "mnuLastTrial"},
    {ShowAverage, "mnuAveragedTrials"},
    {ShowLegend, "mnuLegend tbLegend"},
    {Scale, "mnuScale", Runs, letsEventsRun},
    {ResetScale, "mnuResetScale"},
    {MouseZooms, "mnuMouseZooms"},
    {MousePans, "mnuMousePans"},
    {ZoomArea, "mnuZooms"},
    {ButtonZoom, "tbZoom"},
    {ButtonPan, "tbPan"},
    {ButtonReset, "tbReset"},
    {ShowDigitally, "mnuDigital"},
    {Collect, "mnuAcquire tbCollect", NotWhileCollecting, false,
     "A trial is being collected. Collect the next one when it has arrived."},
    {RealTime, "mnuRealTime tbRealtime", NotWhileCollecting, false,
     "A trial is being collected. Stop it before you watch the channels."},
    {Stop, "tbStop"},
    {Information, "mnuInfo tbInformation", Runs, letsEventsRun},
    {AddOverlay, "mnuOverlay"},
    {ViewOverlay, "mnuViewOverlay", Runs, letsEventsRun},
    {ClearOverlay, "mnuClear"},
    {ClearAverage, "mnuClearAverage"},
    {Autosave, "mnuOption_0"},
    {AutosaveWithoutAsking, "mnuAutosaveWithoutAsking"},
    {DebugMode, "mnuOption_1"},
    {ResetBefore, "mnuOption_2"},
    {StartMaximized, "mnuOption_3"},
    {SaveOffsets, "mnuOption_4"},
    {LoadSetup, "mnuOption_5", WhileIdle, letsEventsRun,
     "A trial is being collected. Load the setup when it has arrived."},
    {SaveSetup, "mnuOption_6", Holds, letsEventsRun},
    {SpreadsheetExcel, "mnuSpreadsheet_0"},
    {SpreadsheetQuattro, "mnuSpreadsheet_1"},
    {SpreadsheetOther, "mnuSpreadsheet_2", Runs, letsEventsRun},
    {StartSibling, "mnuProgram_0", Runs, letsEventsRun},
    {ButtonSibling, "tbLumidor2", Runs, letsEventsRun},
    {StartQuattro, "mnuProgram_1", Runs, letsEventsRun},
    {StartExcel, "mnuProgram_2", Runs, letsEventsRun},
    {HelpContents, "mnuContents tbHelp"},
    {HelpSearch, "mnuSearch"},
    {About, "mnuAbout_0", Runs, letsEventsRun},
    {AboutHelp, "mnuAbout_1"},
    {AboutUpdate, "mnuAbout_2", Runs, letsEventsRun},
    {AboutWebsite, "mnuAbout_3"},
    {AboutHardware, "mnuAbout_4"},
}};

constexpr bool inOrder() {
    for (std::size_t row = 0; row < rules.size(); ++row)
        if (static_cast<std::size_t>(rules[row].command) != row) return false;
    return true;
}
static_assert(inOrder());

} // namespace

std::span<const CommandRule, commandCount> commandRules() {
    return rules;
}

const CommandRule& ruleOf(Command command) {
    return rules[static_cast<std::size_t>(command)];
}

bool mayRun(const CommandRule& rule, RunPhase phase) {
    const bool whileCollecting = rule.duringRun == Runs || rule.duringRun == Holds;
    return whileCollecting || !collecting(phase);
}

} // namespace tavex2
