#include "toolbars/Ui_CPlaybackToolBar.h"

#include "common/CSeekSlider.h"
#include "common/CToolButton.h"
#include "common/FormParts.h"
#include "timeline/CLinSliderWidget.h"
#include "timeline/CPlaybackSliderWidget.h"
#include "toolbars/CPictureIcon.h"
#include "toolbars/CVideoPicButton.h"

#include <QPushButton>

using namespace FormParts;

namespace {

template <class Button>
Button* AddButton(QHBoxLayout* pRow, QWidget* pParent, const char* name, int nWidth, int nHeight)
{
    auto* button = AddWidget<Button>(pRow, pParent, name);
    button->setFixedSize(nWidth, nHeight);
    return button;
}

template <class View> View* AddView(QVBoxLayout* pColumn, QWidget* pParent, const char* name)
{
    auto* view = AddWidget<View>(pColumn, pParent, name);
    view->setMinimumSize(0, 50);
    view->setMaximumSize(QWIDGETSIZE_MAX, 50);
    return view;
}

} // namespace

void Ui_CPlaybackToolBar::setupUi(QFrame* bar)
{
    bar->setObjectName("CPlaybackToolBar");
    bar->resize(850, 90);
    bar->setFixedHeight(90);
    bar->setMaximumWidth(QWIDGETSIZE_MAX);
    bar->setWindowTitle("CPlaybackToolBar");
    auto* column = NewLayout<QVBoxLayout>(bar, "verticalLayout", 0);
    m_fileTypeWidget = AddView<CLinSliderWidget>(column, bar, "m_fileTypeWidget");
    NewLayout<QVBoxLayout>(m_fileTypeWidget, "verticalLayout_3", 0);
    m_timerTypeWidget = AddView<CPlaybackSliderWidget>(column, bar, "m_timerTypeWidget");
    auto* controls = AddWidget<QWidget>(column, bar, "widget_2");
    controls->setMaximumSize(QWIDGETSIZE_MAX, 1677215);

    auto* row = NewLayout<QHBoxLayout>(controls, "horizontalLayout_4", 9, QMargins(0, 0, 10, 10));
    AddFileButtons(AddRow(row, "horizontalLayout_2", 3, QMargins(10, 0, 0, 0)), controls);
    AddSpacer(row, 0, 0);
    AddTransportButtons(AddRow(row, "horizontalLayout", 9), controls);
    AddAudio(AddRow(row, "horizontalLayout_3", 3), controls);
    m_typeBtn = AddButton<CVideoPicButton>(row, controls, "m_typeBtn", 27, 27);
    m_typeBtn->setMaximumWidth(QWIDGETSIZE_MAX);
    AddSpacer(row, 0, 0);
    m_btnFreezePlay = AddButton<QPushButton>(row, controls, "m_btnFreezePlay", 60, 27);
    m_btnFreezePlay->setText("PushButton");
    AddLayoutButtons(row, controls);
}

void Ui_CPlaybackToolBar::AddFileButtons(QHBoxLayout* pRow, QWidget* pParent)
{
    m_downloadBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_downloadBtn", 16, 16);
    m_openBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_openBtn", 16, 16);
    m_screenshotBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_screenshotBtn", 16, 16);
    m_saveBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_saveBtn", 16, 16);
    m_clipBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_clipBtn", 16, 16);
}

void Ui_CPlaybackToolBar::AddTransportButtons(QHBoxLayout* pRow, QWidget* pParent)
{
    // Slow stays left of quick in every language, as the scale above runs to the right in all of them.
    if (pParent->isRightToLeft())
        pRow->setDirection(QBoxLayout::RightToLeft);
    m_slowBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_slowBtn", 24, 24);
    m_playBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_playBtn", 30, 30);
    m_stopBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_stopBtn", 24, 24);
    m_quickBtn = AddButton<CVideoPicButton>(pRow, pParent, "m_quickBtn", 24, 24);
}

void Ui_CPlaybackToolBar::AddAudio(QHBoxLayout* pRow, QWidget* pParent)
{
    m_audioBtn = AddButton<CPictureIcon>(pRow, pParent, "m_audioBtn", 18, 18);
    m_audioSlider = AddWidget<CSeekSlider>(pRow, pParent, "m_audioSlider");
    m_audioSlider->setOrientation(Qt::Horizontal);
    // Style sheets fill a slider's left part in either direction: the loud end stays on the right.
    m_audioSlider->setLayoutDirection(Qt::LeftToRight);
    m_audioSlider->setFixedWidth(100);
    m_audioSlider->setMinimumHeight(0);
    m_audioSlider->setMaximumHeight(27);
}

void Ui_CPlaybackToolBar::AddLayoutButtons(QHBoxLayout* pRow, QWidget* pParent)
{
    m_btn1 = AddButton<CToolButton>(pRow, pParent, "m_btn1", 18, 18);
    m_btn4 = AddButton<CVideoPicButton>(pRow, pParent, "m_btn4", 18, 18);
    m_btn6 = AddButton<CToolButton>(pRow, pParent, "m_btn6", 18, 18);
    m_btn8 = AddButton<CVideoPicButton>(pRow, pParent, "m_btn8", 18, 18);
    m_btn9 = AddButton<CToolButton>(pRow, pParent, "m_btn9", 18, 18);
    btnPVplayer = AddButton<CToolButton>(pRow, pParent, "btnPVplayer", 18, 18);
}
