#pragma once

class CLinSliderWidget;
class CPictureIcon;
class CPlaybackSliderWidget;
class CVideoPicButton;
class QFrame;
class QHBoxLayout;
class QPushButton;
class QSlider;
class QToolButton;
class QWidget;

/// The form of the playback toolbar; the names of the members are the object names that style sheets address.
class Ui_CPlaybackToolBar
{
public:
    void setupUi(QFrame* bar);

    CLinSliderWidget* m_fileTypeWidget = nullptr;
    CPlaybackSliderWidget* m_timerTypeWidget = nullptr;
    CVideoPicButton* m_downloadBtn = nullptr;
    CVideoPicButton* m_openBtn = nullptr;
    CVideoPicButton* m_screenshotBtn = nullptr;
    CVideoPicButton* m_saveBtn = nullptr;
    CVideoPicButton* m_clipBtn = nullptr;
    CVideoPicButton* m_slowBtn = nullptr;
    CVideoPicButton* m_playBtn = nullptr;
    CVideoPicButton* m_stopBtn = nullptr;
    CVideoPicButton* m_quickBtn = nullptr;
    CPictureIcon* m_audioBtn = nullptr;
    QSlider* m_audioSlider = nullptr;
    CVideoPicButton* m_typeBtn = nullptr;
    QPushButton* m_btnFreezePlay = nullptr;
    QToolButton* m_btn1 = nullptr;
    CVideoPicButton* m_btn4 = nullptr;
    QToolButton* m_btn6 = nullptr;
    CVideoPicButton* m_btn8 = nullptr;
    QToolButton* m_btn9 = nullptr;
    QToolButton* btnPVplayer = nullptr;

private:
    void AddFileButtons(QHBoxLayout* pRow, QWidget* pParent);
    void AddTransportButtons(QHBoxLayout* pRow, QWidget* pParent);
    void AddAudio(QHBoxLayout* pRow, QWidget* pParent);
    void AddLayoutButtons(QHBoxLayout* pRow, QWidget* pParent);
};
