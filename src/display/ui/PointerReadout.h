#pragma once

#include "acquisition/records/AcqSettings.h"
#include "display/ui/CWGraph.h"

#include <QObject>

#include <functional>

namespace tavex2 {

/// Says in words which value lies under the pointer, on any of the graphs. User-interface thread.
class PointerReadout final : public QObject {
    Q_OBJECT

  public:
    /// `units` are those of the graphs' labels.
    explicit PointerReadout(const SetupOptions& units, QObject* parent = nullptr);

    /// Watches a graph; `channelAt` gives the number of the channel at a position of the trial's channel list.
    void watch(CWGraph& graph, std::function<int(int position)> channelAt);

  Q_SIGNALS:
    /// Time, voltage and channel of the sample nearest to the pointer; empty when there is none.
    void changed(const QString& text);

  private:
    QString textAt(const CWGraph& graph, double x, double y, const std::function<int(int)>& channelAt) const;

    const SetupOptions& m_units;
};

} // namespace tavex2
