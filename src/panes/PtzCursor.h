#pragma once

class QWidget;

/// Gives a widget the cursor of a PtzZone: a picture of the installation, the pointing hand, or the arrow for
/// every number without a picture and for a picture that can't be read.
void SetZoneCursor(QWidget& widget, int nZone);
