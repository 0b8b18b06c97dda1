#include "manager/RecordingPage.h"

#include "common/Words.h"
#include "manager/NotedField.h"
#include "manager/ZoneOverlay.h"

#include <CPaneDeck.h>

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace {

constexpr const char* RecordingNames[] = {"Always", "On motion", "Never"};
constexpr int RectangleFunction = 2;
constexpr int MostZones = 16;
/// In parts of the picture: what is smaller was a slip of the hand.
constexpr double LeastSide = 0.02;

} // namespace

RecordingPage::RecordingPage(const CameraDescription& about, CPaneDeck* picture, QWidget* parent)
    : QWidget(parent), m_picture(picture), m_overlay(new ZoneOverlay(picture->PaneWidget(0))),
      m_recording(new QComboBox), m_sensitivity(new QSlider(Qt::Horizontal)), m_count(new QLabel),
      m_clear(new QPushButton(word("&Whole picture")))
{
    auto* form = new QFormLayout(this);
    for (int i = 0; i < int(std::size(RecordingNames)); ++i)
        m_recording->addItem(nameOf(CameraDescription::Recording(i)));
    m_recording->setCurrentIndex(int(about.recording));
    m_sensitivity->setRange(CameraDescription::LeastSensitivity, CameraDescription::MostSensitivity);
    m_sensitivity->setPageStep(10);
    m_sensitivity->setValue(about.sensitivity);
    m_count->setWordWrap(true);
    NotedField::add(form, word("&Record"), m_recording);
    NotedField::add(form, word("&Sensitivity to motion"), m_sensitivity);
    form->addRow(word("Zones"), m_count);
    form->addRow(QString(), m_clear);
    setZones(about.zones);
    connect(m_clear, &QPushButton::clicked, this, [this] { setZones({}); });
    connect(picture, &CPaneDeck::sig_SelectRegion, this, &RecordingPage::addZone);
}

QString RecordingPage::nameOf(CameraDescription::Recording recording)
{
    return word(RecordingNames[int(recording)]);
}

void RecordingPage::fill(CameraDescription* about) const
{
    about->recording = CameraDescription::Recording(m_recording->currentIndex());
    about->sensitivity = m_sensitivity->value();
    about->zones = m_zones;
}

void RecordingPage::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_picture->SetFunctionParam(0, RectangleFunction);
    m_overlay->setZones(m_zones);
}

void RecordingPage::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_picture->SetFunctionParam(0, 0);
    m_overlay->setZones({});
}

void RecordingPage::addZone(int pane, QPoint from, QPoint to)
{
    const QSizeF size = m_picture->PaneWidget(pane)->size();
    if (!isVisible() || to.x() < 0 || to.y() < 0 || size.isEmpty() || m_zones.size() >= MostZones)
        return;
    const QRectF drawn = QRectF(from, to).normalized();
    const QRectF part(drawn.x() / size.width(), drawn.y() / size.height(), drawn.width() / size.width(),
                      drawn.height() / size.height());
    const QRectF zone = part & QRectF(0, 0, 1, 1);
    if (zone.width() >= LeastSide && zone.height() >= LeastSide)
        setZones(m_zones + QVector<QRectF>{zone});
}

void RecordingPage::setZones(const QVector<QRectF>& zones)
{
    m_zones = zones;
    m_count->setText(zones.isEmpty()
                         ? word("Motion counts in the whole picture. Draw rectangles on it to choose zones.")
                         : word("Zones in which motion counts: %1").arg(zones.size()));
    m_clear->setEnabled(!zones.isEmpty());
    if (isVisible())
        m_overlay->setZones(zones);
}
