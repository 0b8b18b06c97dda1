#include "tabs/TourDialog.h"

#include "cameras/CameraList.h"
#include "common/Words.h"
#include "views/ViewList.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QListWidget>
#include <QRadioButton>
#include <QSpinBox>

namespace {

constexpr int Layouts[] = {1, 4, 6, 8, 9, 16};

void addRow(QListWidget* list, const QString& text, const QString& key, bool isChosen)
{
    auto* item = new QListWidgetItem(text, list);
    item->setData(Qt::UserRole, key);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(isChosen ? Qt::Checked : Qt::Unchecked);
}

QStringList chosenOf(const QListWidget& list)
{
    QStringList keys;
    for (int row = 0; row < list.count(); ++row) {
        if (list.item(row)->checkState() == Qt::Checked)
            keys.append(list.item(row)->data(Qt::UserRole).toString());
    }
    return keys;
}

} // namespace

TourDialog::TourDialog(const TourPlan& plan, const CameraList& cameras, const ViewList& views,
                       QWidget* parent)
    : QDialog(parent), m_byCamera(new QRadioButton(word("&Cameras, dealt out to the panes"))),
      m_byView(new QRadioButton(word("&Views, one after the other"))), m_cameras(new QListWidget),
      m_views(new QListWidget), m_panes(new QComboBox), m_seconds(new QSpinBox),
      m_pauses(new QCheckBox(word("&Pause under the pointer")))
{
    setObjectName("TourDialog");
    setWindowTitle(word("Tour"));
    setAttribute(Qt::WA_DeleteOnClose);
    fillCameras(cameras, plan.cameras);
    fillViews(views, plan.views);
    for (int count : Layouts)
        m_panes->addItem(QString::number(count), count);
    m_panes->setCurrentIndex(qMax(0, m_panes->findData(plan.panes)));
    m_seconds->setRange(TourPlan::LeastSeconds, TourPlan::MostSeconds);
    m_seconds->setValue(plan.seconds);
    m_seconds->setSuffix(" s");
    m_pauses->setChecked(plan.pauses);
    const bool byView = plan.showsViews && m_views->count() > 0;
    (byView ? m_byView : m_byCamera)->setChecked(true);
    m_byView->setEnabled(m_views->count() > 0);
    layOut();
}

void TourDialog::fillCameras(const CameraList& cameras, const QStringList& chosen)
{
    m_cameras->setObjectName("TourCameras");
    m_cameras->setAccessibleName(word("Cameras"));
    for (int i = 0; i < cameras.count(); ++i) {
        const CameraRecord& camera = cameras.at(i);
        addRow(m_cameras, camera.name, camera.about.id, chosen.isEmpty() || chosen.contains(camera.about.id));
    }
}

void TourDialog::fillViews(const ViewList& views, const QStringList& chosen)
{
    m_views->setObjectName("TourViews");
    m_views->setAccessibleName(word("Views"));
    for (const DeckView& view : views.views())
        addRow(m_views, view.name, view.name, chosen.contains(view.name));
}

void TourDialog::layOut()
{
    auto* form = new QFormLayout(this);
    form->addRow(m_byCamera);
    form->addRow(m_cameras);
    form->addRow(word("Panes of the &layout"), m_panes);
    form->addRow(m_byView);
    form->addRow(m_views);
    form->addRow(word("&Each for"), m_seconds);
    form->addRow(m_pauses);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(buttons);
    m_views->setMaximumHeight(m_views->fontMetrics().height() * 6);
    for (QWidget* widget : {static_cast<QWidget*>(m_cameras), static_cast<QWidget*>(m_panes)}) {
        widget->setEnabled(m_byCamera->isChecked());
        connect(m_byCamera, &QRadioButton::toggled, widget, &QWidget::setEnabled);
    }
    m_views->setEnabled(m_byView->isChecked());
    connect(m_byView, &QRadioButton::toggled, m_views, &QWidget::setEnabled);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

/// All cameras are chosen as such, so that those that are new join in.
TourPlan TourDialog::plan() const
{
    TourPlan plan;
    plan.showsViews = m_byView->isChecked();
    plan.cameras = chosenOf(*m_cameras);
    if (plan.cameras.size() == m_cameras->count())
        plan.cameras.clear();
    plan.views = chosenOf(*m_views);
    plan.panes = m_panes->currentData().toInt();
    plan.seconds = m_seconds->value();
    plan.pauses = m_pauses->isChecked();
    return plan;
}
