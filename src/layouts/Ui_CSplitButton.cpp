#include "layouts/Ui_CSplitButton.h"

#include "common/FormParts.h"

#include <QFrame>
#include <QLabel>
#include <QToolButton>

using namespace FormParts;

void Ui_CSplitButton::setupUi(QWidget* button)
{
    button->setObjectName("CSplitButton");
    button->resize(171, 35);

    auto* outer = NewLayout<QHBoxLayout>(button, "horizontalLayout", 0);
    frame = AddWidget<QFrame>(outer, button, "frame");
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFrameShadow(QFrame::Raised);

    auto* row = NewLayout<QHBoxLayout>(frame, "horizontalLayout_2", 1, QMargins(15, 1, 1, 1));
    btnpic = AddWidget<QToolButton>(row, frame, "btnpic");
    btnpic->setMinimumSize(30, 30);
    btnpic->setStyleSheet("border-image: url();background-color:#transparent;");
    label = AddWidget<QLabel>(row, frame, "label");
    label->setAlignment(Qt::AlignCenter);
}
