#include "layouts/CTitleDialog.h"

#include "common/StyleSheet.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QVBoxLayout>

namespace {

/// The height in pixels of the strip that moves the dialog. It reaches below the title bar.
constexpr int DragHeight = 50;

} // namespace

CTitleDialog::CTitleDialog(QWidget* parent) : QDialog(parent), m_moving(false)
{
    setObjectName("CTitleDialog");
    setStyleSheet(LoadStyleSheet("/dialogsheet.qss"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::Tool);

    m_mainLayout = new QVBoxLayout(this);
    m_mainLayout->setContentsMargins(0, 0, 0, 0);
    m_mainLayout->setSpacing(0);
    m_mainLayout->setAlignment(Qt::AlignTop);
    BuildTitleBar();
    m_mainLayout->addWidget(&m_titleBar);
    auto* background = new QFrame(this);
    background->setObjectName("background");
    m_mainLayout->addWidget(background);
    m_contentLayout = new QVBoxLayout(background);
    m_contentLayout->setContentsMargins(0, 0, 0, 0);
    m_contentLayout->setSpacing(0);

    connect(&m_closeButton, SIGNAL(clicked()), this, SLOT(slot_Closewindow()));
    setAttribute(Qt::WA_TranslucentBackground);
}

void CTitleDialog::BuildTitleBar()
{
    m_titleBar.setObjectName("titlebar");
    m_titleBar.setFixedHeight(27);
    auto* row = new QHBoxLayout(&m_titleBar);
    row->setSpacing(0);
    row->setContentsMargins(10, 4, 4, 15);
    m_titleLabel.setObjectName("labtitle");
    m_titleLabel.setAlignment(Qt::AlignCenter);
    m_titleLabel.setMinimumHeight(23);
    row->addWidget(&m_titleLabel);
    m_closeButton.setObjectName("close");
    m_closeButton.setFixedSize(18, 18);
    row->addWidget(&m_closeButton);
}

void CTitleDialog::SetTitle(const QString& text)
{
    m_titleLabel.setText(text);
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
    if (event->y() < DragHeight)
        m_moving = true;
    m_windowPos = pos();
    m_pressPos = event->globalPos();
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
        move(m_windowPos + event->globalPos() - m_pressPos);
}

void CTitleDialog::closeEvent(QCloseEvent*) {}
