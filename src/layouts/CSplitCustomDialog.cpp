#include "layouts/CSplitCustomDialog.h"

#include "common/Accessible.h"
#include "layouts/CSegmentationDialog.h"
#include "layouts/CSplitCatalog.h"
#include "text/LangText.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QRubberBand>
#include <QToolButton>

#include <algorithm>
#include <iterator>

namespace {

const QSize ThumbnailSize(30, 30);
constexpr int RowLength = 5;

/// How far an arrow key goes among buttons in rows, 0 for any other key.
int StepOf(int key, bool mirrored)
{
    switch (key) {
    case Qt::Key_Left:
        return mirrored ? 1 : -1;
    case Qt::Key_Right:
        return mirrored ? -1 : 1;
    case Qt::Key_Up:
        return -RowLength;
    case Qt::Key_Down:
        return RowLength;
    }
    return 0;
}

int IndexOf(const QObject* sender, QToolButton* const (&buttons)[CSplitCatalog::LayoutCount])
{
    const auto found = std::find(std::begin(buttons), std::end(buttons), sender);
    return found == std::end(buttons) ? -1 : int(found - std::begin(buttons));
}

void ShowLayout(QToolButton* button, int type, int index)
{
    const CSplitCatalog* catalog = CSplitCatalog::Instance();
    const QString count = LangText("%1 panes").arg(catalog->Layout(type, index).count);
    const QString number = LangText("Custom layout %1").arg(index + 1);
    button->setIcon(catalog->LayoutThumbnail(type, index, "#5c6576", "#eeeeee"));
    button->setAccessibleName(type == 0 ? count : number + ", " + count);
}

} // namespace

CSplitCustomDialog::CSplitCustomDialog(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::Popup);
    setStyleSheet(CSplitCatalog::Instance()->StyleSheet("/liveviewsheet.qss"));
    ui.labNormal->setText(LangText("PaneDeck.Normal Split"));
    ui.labCustom->setText(LangText("PaneDeck.Custom Split"));
    CSplitCatalog::Instance()->thumbnailSize = ThumbnailSize;
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i) {
        ui.btnN[i]->setIconSize(ThumbnailSize);
        ui.btnC[i]->setIconSize(ThumbnailSize);
    }
    SetIcons(0);
    ui.btnEditSplit->setToolTip(LangText("PaneDeck.Edit split"));
    ui.btnEditSplit->setAccessibleName(LangText("PaneDeck.Edit split"));
    slot_setbtnCIcon();
    setMouseTracking(true);
    connect(ui.btnEditSplit, SIGNAL(clicked()), this, SLOT(btnEditclicked()));
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i) {
        connect(ui.btnN[i], SIGNAL(clicked()), this, SLOT(slot_btnWndSwidch()));
        connect(ui.btnC[i], SIGNAL(clicked()), this, SLOT(slot_btnWndSwidch()));
    }
    for (const auto& buttons : {ui.btnN, ui.btnC})
        std::copy(buttons, buttons + CSplitCatalog::LayoutCount, std::back_inserter(m_buttons));
    m_buttons.append(ui.btnEditSplit);
    m_pFrame = new QRubberBand(QRubberBand::Rectangle, ui.MenuWidget);
}

void CSplitCustomDialog::btnEditclicked()
{
    hide();
    CSegmentationDialog dialog(nullptr);
    connect(&dialog, SIGNAL(sig_LayoutEdited(int,bool)), this, SIGNAL(sig_LayoutEdited(int,bool)));
    // The picker may be gone when this returns.
    dialog.exec();
}

void CSplitCustomDialog::slot_btnWndSwidch()
{
    const int normal = IndexOf(sender(), ui.btnN);
    const int custom = IndexOf(sender(), ui.btnC);
    const int type = custom < 0 ? 0 : 1;
    const int no = qMax(0, type == 0 ? normal : custom);
    const QPointer<CSplitCustomDialog> alive(this);
    Q_EMIT sig_btnWndSwidch(type, no);
    if (alive)
        hide();
}

void CSplitCustomDialog::slot_setbtnCIcon()
{
    CSplitCatalog::Instance()->thumbnailSize = ThumbnailSize;
    SetIcons(1);
}

void CSplitCustomDialog::mousePressEvent(QMouseEvent* event)
{
    setAttribute(Qt::WA_NoMouseReplay);
    QWidget::mousePressEvent(event);
}

void CSplitCustomDialog::focusOutEvent(QFocusEvent*)
{
    hide();
}

void CSplitCustomDialog::showEvent(QShowEvent*)
{
    setFocus();
    slot_setbtnCIcon();
}

void CSplitCustomDialog::hideEvent(QHideEvent* event)
{
    m_current = -1;
    m_pFrame->hide();
    QWidget::hideEvent(event);
}

void CSplitCustomDialog::keyPressEvent(QKeyEvent* event)
{
    const bool clicks =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (const int step = StepOf(event->key(), isRightToLeft()))
        GoBy(step);
    else if (clicks && m_current >= 0)
        m_buttons.at(m_current)->click();
    else
        QWidget::keyPressEvent(event);
}

void CSplitCustomDialog::GoBy(int step)
{
    m_current = m_current < 0 ? 0 : qBound(0, m_current + step, int(m_buttons.size()) - 1);
    QToolButton* button = m_buttons.at(m_current);
    m_pFrame->setGeometry(
        QRect(button->mapTo(ui.MenuWidget, QPoint()), button->size()).adjusted(-2, -2, 2, 2));
    m_pFrame->show();
    TellAccessible(button, QAccessible::Focus);
}

void CSplitCustomDialog::SetIcons(int type)
{
    const auto& buttons = type == 0 ? ui.btnN : ui.btnC;
    for (int i = 0; i < CSplitCatalog::LayoutCount; ++i)
        ShowLayout(buttons[i], type, i);
}
