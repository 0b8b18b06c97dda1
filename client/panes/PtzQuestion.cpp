#include "panes/PtzQuestion.h"

#include "cameras/CameraList.h"
#include "cameras/PtzLeases.h"
#include "common/Words.h"

#include <QMessageBox>
#include <QPushButton>

PtzQuestion::PtzQuestion(PtzLeases* leases, const CameraList& cameras, QWidget* window)
    : QObject(window), m_leases(leases), m_cameras(cameras), m_window(window)
{
    connect(leases, &PtzLeases::asked, this, &PtzQuestion::ask);
    connect(leases, &PtzLeases::changed, this, &PtzQuestion::close);
    connect(leases, &PtzLeases::lost, this, &PtzQuestion::close);
}

void PtzQuestion::ask(const QString& camera)
{
    const CameraRecord* record = m_cameras.byId(camera);
    if (!record)
        return;
    delete m_open.take(camera);
    const QString text = word("%1 asks for %2, which you turn.").arg(m_leases->askerOf(camera), record->name);
    auto* box = new QMessageBox(QMessageBox::Question, word("Turning a camera"), text, QMessageBox::NoButton,
                                m_window);
    box->setObjectName("PtzQuestion");
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setAttribute(Qt::WA_ShowWithoutActivating);
    box->setModal(false);
    QPushButton* give = box->addButton(word("&Give it away"), QMessageBox::AcceptRole);
    QPushButton* keep = box->addButton(word("&Keep it"), QMessageBox::RejectRole);
    box->setDefaultButton(keep);
    connect(give, &QPushButton::clicked, m_leases, [this, camera] { m_leases->give(camera); });
    connect(keep, &QPushButton::clicked, m_leases, [this, camera] { m_leases->keep(camera); });
    m_open.insert(camera, box);
    box->show();
}

/// Nobody asks any more.
void PtzQuestion::close()
{
    const QStringList cameras = m_open.keys();
    for (const QString& camera : cameras) {
        if (!m_leases->askerOf(camera).isEmpty())
            continue;
        if (QMessageBox* box = m_open.take(camera))
            box->deleteLater();
    }
}
