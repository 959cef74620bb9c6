#pragma once

#include "acquisition/records/LmbHeader.h"
#include "analysis/ChannelMeasures.h"
#include "analysis/ReadingsText.h"
#include "display/ui/CWGraph.h"
#include "display/ui/GraphCursors.h"

#include <QDialog>

#include <array>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QStatusBar;

namespace tavex2 {

/// What the information window and the overlay window share: a channel list, a graph with two cursors and the readings
/// of the stretch between them, which follow the cursors and go to the clipboard. The forms say what is plotted and
/// measured. User-interface thread.
class MeasuringForm : public QDialog {
    Q_OBJECT

  protected:
    MeasuringForm(const QString& name, const QString& caption, QWidget* mainWindow);

    /// The selected channel, rectified or not, is to be plotted and measured.
    virtual void cbChannels_Click() = 0;
    /// What the boxes show for the stretch between the cursors; no value leaves the readings blank.
    virtual std::optional<Readings> measure() const = 0;
    /// The lines of the selected channel, and those of all channels between the same cursors.
    virtual Result<std::vector<ReadingsLine>> copiedLines() = 0;
    virtual Result<std::vector<ReadingsLine>> copiedLinesOfAllChannels() = 0;

    /// One item a channel: "Channel 0", and behind it the label and the unit where `header` has them.
    void fillChannels(int channels, const LmbHeader& header);
    int channel() const;
    bool rectified() const;

    /// Plots a trial's rows in place of what was plotted; nothing for an error, which the status bar tells.
    void plot(const Result<TrialData>& rows, double rateHz);
    /// Shows the same ranges as the main window's graph.
    void takeLimits(const CWGraph& mainGraph);
    /// Cursor 1 goes to the first sample of the view, cursor 2 to the last one.
    void putCursorsAtEnds(double rateHz);

    /// Fills the boxes anew; also what a moved cursor does.
    virtual void CursorChange();
    /// The sample of a plot (0 is the first one) under cursor 0 or 1, V; something is plotted.
    double valueAt(int cursor, int plot) const;

    /// A line for one row of samples between the cursors.
    ReadingsLine lineOf(const std::string& trial, int channel, const LmbHeader& header,
                        const std::optional<Readings>& readings) const;

    void showEvent(QShowEvent* event) override;

    QHBoxLayout& choices() { return *m_choices; }
    QHBoxLayout& middle() { return *m_middle; }
    CWGraph& graph() { return *m_graph; }
    const GraphCursors& cursors() const { return *m_cursors; }
    /// A control that takes the focus by Tab alone, so that after a click on it the keys still move the cursors.
    static void leaveKeysToGraph(QWidget& control);
    /// The labels, boxes and units that belong to measuring: minimum, maximum, peak-to-peak, integral, and the values
    /// at the cursors.
    void showReadings(bool shown);

  private:
    QLineEdit* addBox(QGridLayout& grid, int row, int column, const QString& name, const QString& caption,
                      const QString& unit, const QString& tip);
    void addReadings(QGridLayout& grid);
    void addCopyButtons();
    void addGraph();
    void copy(Result<std::vector<ReadingsLine>> lines);
    void tell(const QString& text);

    QComboBox* m_channels;
    QCheckBox* m_rectify;
    CWGraph* m_graph;
    GraphCursors* m_cursors;
    QHBoxLayout* m_choices;
    QHBoxLayout* m_middle;
    QStatusBar* m_status;
    QLineEdit* m_left = nullptr;
    QLineEdit* m_right = nullptr;
    QLineEdit* m_interval = nullptr;
    QLineEdit* m_minimum = nullptr;
    QLineEdit* m_maximum = nullptr;
    QLineEdit* m_peakToPeak = nullptr;
    QLineEdit* m_integral = nullptr;
    std::array<QLineEdit*, 2> m_values{}; ///< at the cursors
    std::vector<QWidget*> m_measuring;    ///< shown and hidden together
};

} // namespace tavex2
