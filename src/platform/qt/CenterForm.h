#pragma once

class QWidget;

namespace tavex2 {

/// Moves a window over the centre of another one. Nothing happens unless both are windows. Desktops that place windows
/// themselves may not follow.
void CenterForm(QWidget* child, const QWidget* parent);

/// Pixels of this widget's screen that an amount of twips takes up, unrounded.
double pixelsFromTwips(double twips, const QWidget& widget);

} // namespace tavex2
