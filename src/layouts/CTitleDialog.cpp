#include "layouts/CTitleDialog.h"

#include "common/FormParts.h"
#include "common/QtEvents.h"
#include "layouts/CSplitCatalog.h"
#include "text/LangText.h"

#include <QMouseEvent>

using namespace FormParts;

namespace {

/// The height in pixels of the strip that moves the dialog. It reaches below the title bar.
constexpr int DragHeight = 50;

} // namespace

CTitleDialog::CTitleDialog(QWidget* parent) : QDialog(parent), m_moving(false)
{
    setObjectName("CTitleDialog");
    setStyleSheet(CSplitCatalog::Instance()->StyleSheet("/dialogsheet.qss"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::Tool);

    m_mainLayout = NewLayout<QVBoxLayout>(this, QString(), 0);
    m_mainLayout->setAlignment(Qt::AlignTop);
    BuildTitleBar();
    m_mainLayout->addWidget(&m_titleBar);
    auto* background = AddWidget<QFrame>(m_mainLayout, this, "background");
    m_contentLayout = NewLayout<QVBoxLayout>(background, QString(), 0);

    connect(&m_closeButton, SIGNAL(clicked()), this, SLOT(slot_Closewindow()));
    setAttribute(Qt::WA_TranslucentBackground);
}

void CTitleDialog::BuildTitleBar()
{
    m_titleBar.setObjectName("titlebar");
    m_titleBar.setFixedHeight(27);
    auto* row = NewLayout<QHBoxLayout>(&m_titleBar, QString(), 0, QMargins(10, 4, 4, 15));
    m_titleLabel.setObjectName("labtitle");
    m_titleLabel.setAlignment(Qt::AlignCenter);
    m_titleLabel.setMinimumHeight(23);
    row->addWidget(&m_titleLabel);
    m_closeButton.setObjectName("close");
    m_closeButton.setFixedSize(18, 18);
    m_closeButton.setAccessibleName(LangText("Close"));
    row->addWidget(&m_closeButton);
}

void CTitleDialog::SetTitle(const QString& text)
{
    m_titleLabel.setText(text);
    setAccessibleName(text);
}

void CTitleDialog::SetCloseButtonVisible(bool visible)
{
    m_closeButton.setVisible(visible);
}

void CTitleDialog::AlignTitleLeft()
{
    m_titleLabel.setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void CTitleDialog::slot_Closewindow()
{
    close();
}

void CTitleDialog::slot_Close()
{
    close();
}

void CTitleDialog::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    if (event->pos().y() < DragHeight)
        m_moving = true;
    m_windowPos = pos();
    m_pressPos = GlobalPosOf(*event);
}

void CTitleDialog::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_moving = false;
    QDialog::mouseReleaseEvent(event);
}

void CTitleDialog::mouseMoveEvent(QMouseEvent* event)
{
    if (m_moving)
        move(m_windowPos + GlobalPosOf(*event) - m_pressPos);
}

void CTitleDialog::closeEvent(QCloseEvent*) {}
