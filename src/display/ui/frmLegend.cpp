#include "display/ui/frmLegend.h"

#include "base/Windows1252.h"
#include "display/TraceColours.h"
#include "display/WindowLayout.h"
#include "platform/qt/CenterForm.h"

#include <QFrame>
#include <QLabel>

#include <algorithm>

namespace tavex2 {

namespace {

QString css(Rgb colour) {
    return QStringLiteral("#%1%2%3")
        .arg(colour.red, 2, 16, QLatin1Char('0'))
        .arg(colour.green, 2, 16, QLatin1Char('0'))
        .arg(colour.blue, 2, 16, QLatin1Char('0'));
}

/// With the outline of the trace itself, without which light colours are lost on a light window. For the swatch alone:
/// its tool tip would take the colours over too.
QString swatchStyle(const QString& swatch, int channel) {
    const Rgb colour = traceColour(channel);
    return QStringLiteral("#%1 { background-color: %2; border: 1px solid %3 }")
        .arg(swatch, css(colour), css(traceOutline(colour).value_or(Rgb{0x80, 0x80, 0x80})));
}

} // namespace

frmLegend::frmLegend(QWidget* mainWindow) : QDialog(mainWindow, Qt::Tool | Qt::WindowCloseButtonHint) {
    setObjectName(QStringLiteral("frmLegend"));
    setWindowTitle(tr("Legend"));
    setAttribute(Qt::WA_ShowWithoutActivating);

    // A large font needs more room between the columns than a usual one.
    constexpr double gapTwips = 300;
    const double numberWidth = fontMetrics().horizontalAdvance(QStringLiteral("00")) + 4.0;
    const double scale = std::max(1.0, numberWidth / pixelsFromTwips(gapTwips, *this));
    const auto pixels = [&](double twips) { return qRound(pixelsFromTwips(twips, *this) * scale); };

    for (int channel = 0; channel < traceColourCount; ++channel) {
        const SwatchPlace place = legendSwatch(channel);
        auto* swatch = new QFrame(this);
        swatch->setObjectName(QStringLiteral("shpColour_%1").arg(channel));
        swatch->setAccessibleName(tr("Colour of channel %1").arg(channel));
        swatch->setStyleSheet(swatchStyle(swatch->objectName(), channel));
        swatch->setGeometry(pixels(place.left), pixels(place.top), pixels(place.width), pixels(place.height));

        auto* number = new QLabel(QString::number(channel), this);
        number->setObjectName(QStringLiteral("lblChannel_%1").arg(channel));
        number->setGeometry(pixels(place.left + place.width) + 3, pixels(place.top), qRound(numberWidth),
                            pixels(place.height));
    }
    const SwatchPlace last = legendSwatch(traceColourCount - 1);
    const int margin = pixels(legendSwatch(0).left);
    const int title = fontMetrics().horizontalAdvance(windowTitle()) * 4; // with room for a desktop's buttons
    setFixedSize(std::max(pixels(last.left + last.width) + 3 + qRound(numberWidth) + margin / 2, title),
                 pixels(last.top + last.height) + margin);
}

void frmLegend::showNames(const LmbHeader& header) {
    for (int channel = 0; channel < traceColourCount; ++channel) {
        const std::string name = labelOf(header, channel) + " (" + channelUnitOf(header, channel) + ")";
        const QString tip = QString::fromStdString(utf8FromWindows1252(name));
        for (const char* object : {"shpColour_%1", "lblChannel_%1"})
            findChild<QWidget*>(QString::fromLatin1(object).arg(channel))->setToolTip(tip);
    }
}

/// Centred over the main window when it is loaded, and again after the user closed it.
void frmLegend::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!m_placed) CenterForm(this, parentWidget());
    m_placed = true;
}

/// Also what the close box does.
void frmLegend::reject() {
    QDialog::reject();
    m_placed = false;
    Q_EMIT Form_Unload();
}

} // namespace tavex2
