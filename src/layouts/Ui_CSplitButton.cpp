#include "layouts/Ui_CSplitButton.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

void Ui_CSplitButton::setupUi(QWidget* button)
{
    button->setObjectName("CSplitButton");
    button->resize(171, 35);

    auto* outer = new QHBoxLayout(button);
    outer->setObjectName("horizontalLayout");
    outer->setSpacing(0);
    outer->setContentsMargins(0, 0, 0, 0);
    frame = new QFrame(button);
    frame->setObjectName("frame");
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setFrameShadow(QFrame::Raised);
    outer->addWidget(frame);

    auto* row = new QHBoxLayout(frame);
    row->setObjectName("horizontalLayout_2");
    row->setSpacing(1);
    row->setContentsMargins(15, 1, 1, 1);
    btnpic = new QToolButton(frame);
    btnpic->setObjectName("btnpic");
    btnpic->setMinimumSize(30, 30);
    btnpic->setStyleSheet("border-image: url();background-color:#transparent;");
    row->addWidget(btnpic);
    label = new QLabel(frame);
    label->setObjectName("label");
    label->setAlignment(Qt::AlignCenter);
    row->addWidget(label);
}
