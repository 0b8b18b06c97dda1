#include "settings/AlarmPage.h"

#include "alarms/AlarmRules.h"
#include "cameras/CameraList.h"
#include "common/Words.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTimeEdit>

namespace {

QCheckBox* newCheck(const QString& text, bool on)
{
    auto* check = new QCheckBox(text);
    check->setChecked(on);
    return check;
}

QTimeEdit* newTime(const QTime& time, const QString& name)
{
    auto* edit = new QTimeEdit(time);
    edit->setDisplayFormat("HH:mm");
    edit->setAccessibleName(name);
    return edit;
}

} // namespace

AlarmPage::AlarmPage(const AlarmRules& rules, const CameraList& cameras)
    : m_sound(newCheck(word("&Sound"), rules.hasSound)),
      m_notice(newCheck(word("&Notice by the desktop"), rules.hasNotice)),
      m_quiet(newCheck(word("&Quiet, only listed, from"), rules.hasQuietTime)),
      m_from(newTime(rules.quietFrom, word("Quiet from"))), m_to(newTime(rules.quietTo, word("Quiet until"))),
      m_cameras(new QListWidget)
{
    auto* quiet = new QHBoxLayout;
    quiet->addWidget(m_quiet);
    quiet->addWidget(m_from);
    quiet->addWidget(new QLabel(word("until")));
    quiet->addWidget(m_to);
    quiet->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_sound);
    column->addWidget(m_notice);
    column->addLayout(quiet);
    auto* label = new QLabel(word("&Cameras that raise alarms:"));
    label->setBuddy(m_cameras);
    column->addWidget(label);
    column->addWidget(m_cameras, 1);
    for (QTimeEdit* edit : {m_from, m_to}) {
        edit->setEnabled(rules.hasQuietTime);
        connect(m_quiet, &QCheckBox::toggled, edit, &QWidget::setEnabled);
    }
    fillCameras(rules, cameras);
}

void AlarmPage::fillCameras(const AlarmRules& rules, const CameraList& cameras)
{
    m_cameras->setAccessibleName(word("Cameras that raise alarms"));
    for (int i = 0; i < cameras.count(); ++i) {
        auto* row = new QListWidgetItem(cameras.at(i).name, m_cameras);
        row->setData(Qt::UserRole, cameras.at(i).about.id);
        row->setCheckState(rules.isOn(cameras.at(i).about.id) ? Qt::Checked : Qt::Unchecked);
    }
}

AlarmRules AlarmPage::rules() const
{
    AlarmRules rules;
    rules.hasSound = m_sound->isChecked();
    rules.hasNotice = m_notice->isChecked();
    rules.hasQuietTime = m_quiet->isChecked();
    rules.quietFrom = m_from->time();
    rules.quietTo = m_to->time();
    for (int i = 0; i < m_cameras->count(); ++i) {
        if (m_cameras->item(i)->checkState() != Qt::Checked)
            rules.offCameras.append(m_cameras->item(i)->data(Qt::UserRole).toString());
    }
    return rules;
}
