#include "manager/CameraEdits.h"

#include "cameras/CameraList.h"
#include "cameras/CameraTable.h"
#include "cameras/PrivateFile.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "manager/CameraDialog.h"
#include "manager/SeveralDialog.h"

#include <QCheckBox>
#include <QCollator>
#include <QFileDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int SyntheticCameras = 16;

void open(QDialog* dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace

void CameraEdits::add(QWidget* window, const QString& group)
{
    CameraDescription about;
    about.id = newCameraId();
    about.group = group;
    open(new CameraDialog(m_cameras, about, window));
}

void CameraEdits::addSeveral(QWidget* window)
{
    open(new SeveralDialog(m_cameras, window));
}

void CameraEdits::addSynthetic()
{
    change(m_cameras->descriptions() + CameraList::syntheticCameras(SyntheticCameras));
}

void CameraEdits::edit(QWidget* window, const QString& id)
{
    if (const CameraRecord* camera = m_cameras->byId(id))
        open(new CameraDialog(m_cameras, camera->about, window));
}

void CameraEdits::remove(QWidget* window, const QStringList& ids)
{
    const CameraRecord* first = m_cameras->byId(ids.value(0));
    if (!first)
        return;
    const QString question = ids.size() == 1
                                 ? word("Remove %1? Its recordings stay.").arg(first->name)
                                 : word("Remove %1 cameras? Their recordings stay.").arg(ids.size());
    auto* box = new QMessageBox(QMessageBox::Question, word("Remove"), question,
                                QMessageBox::Yes | QMessageBox::No, window);
    box->setObjectName("RemoveCameras");
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setDefaultButton(QMessageBox::No);
    connect(box->button(QMessageBox::Yes), &QAbstractButton::clicked, this, [this, ids] {
        QVector<CameraDescription> cameras = m_cameras->descriptions();
        const auto isChosen = [&ids](const CameraDescription& camera) { return ids.contains(camera.id); };
        cameras.erase(std::remove_if(cameras.begin(), cameras.end(), isChosen), cameras.end());
        change(cameras);
    });
    box->open();
}

void CameraEdits::switchOver(const QStringList& ids)
{
    const CameraRecord* first = m_cameras->byId(ids.value(0));
    if (!first)
        return;
    const bool isOn = !first->about.isEnabled;
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    for (CameraDescription& camera : cameras) {
        if (ids.contains(camera.id))
            camera.isEnabled = isOn;
    }
    change(cameras);
}

void CameraEdits::regroup(QWidget* window, const QStringList& ids)
{
    const CameraRecord* first = m_cameras->byId(ids.value(0));
    if (!first)
        return;
    QStringList groups{QString()};
    for (int i = 0; i < m_cameras->count(); ++i)
        groups.append(m_cameras->at(i).about.group);
    groups.removeDuplicates();
    bool isGiven = false;
    const QString group = QInputDialog::getItem(window, word("Group"), word("Site/Building"), groups,
                                                groups.indexOf(first->about.group), true, &isGiven);
    if (isGiven)
        setGroup(ids, group);
}

void CameraEdits::setGroup(const QStringList& ids, const QString& group)
{
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    for (CameraDescription& camera : cameras) {
        if (ids.contains(camera.id))
            camera.group = group.simplified();
    }
    change(cameras);
}

void CameraEdits::renameGroup(const QStringList& ids, int level, const QString& name)
{
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    for (CameraDescription& camera : cameras) {
        if (!ids.contains(camera.id))
            continue;
        const QString rest = camera.group.section('/', level + 1);
        const QString start = level == 0 ? QString() : camera.group.section('/', 0, level - 1) + '/';
        camera.group = start + name.simplified() + (rest.isEmpty() ? rest : '/' + rest);
    }
    change(cameras);
}

void CameraEdits::move(const QStringList& ids, int step)
{
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    const int count = int(cameras.size());
    // From the end they move to, so that none is moved twice or past another one of them.
    for (int i = 1; i < count; ++i) {
        const int from = step < 0 ? i : count - 1 - i;
        const int to = from + (step < 0 ? -1 : 1);
        if (ids.contains(cameras.at(from).id) && !ids.contains(cameras.at(to).id))
            cameras.swapItemsAt(from, to);
    }
    change(cameras);
}

void CameraEdits::sortByName()
{
    QCollator order;
    order.setNumericMode(true);
    QVector<CameraDescription> cameras = m_cameras->descriptions();
    const auto isBefore = [&order](const CameraDescription& one, const CameraDescription& other) {
        const int groups = order.compare(one.group, other.group);
        return groups != 0 ? groups < 0 : order.compare(one.name, other.name) < 0;
    };
    std::stable_sort(cameras.begin(), cameras.end(), isBefore);
    change(cameras);
}

/// Passwords are written if that is ticked, and then for the file's owner alone.
void CameraEdits::exportAll(QWidget* window)
{
    auto* dialog = new QFileDialog(window, word("Export the cameras"));
    auto* passwords = new QCheckBox(word("With &passwords, readable by everybody who gets the file"), dialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter("CSV (*.csv)");
    dialog->setDefaultSuffix("csv");
    dialog->selectFile("cameras.csv");
    if (auto* grid = qobject_cast<QGridLayout*>(dialog->layout()))
        grid->addWidget(passwords, grid->rowCount(), 0, 1, grid->columnCount());
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, passwords](const QString& path) { writeTable(path, passwords->isChecked()); });
    dialog->open();
}

void CameraEdits::writeTable(const QString& path, bool withPasswords)
{
    QHash<QString, QString> passwords;
    const QVector<CameraDescription> cameras = m_cameras->descriptions();
    for (const CameraDescription& camera : cameras) {
        if (withPasswords)
            passwords.insert(camera.id, m_cameras->passwordOf(camera.id));
    }
    QString error;
    if (!writePrivateFile(path, CameraTable::write(cameras, passwords).toUtf8(), &error))
        Q_EMIT failed(engineText(error));
}

void CameraEdits::change(const QVector<CameraDescription>& cameras)
{
    QString error;
    if (!m_cameras->setDescriptions(cameras, &error))
        Q_EMIT failed(engineText(error));
}
