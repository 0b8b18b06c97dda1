#include "manager/DevicePage.h"

#include "common/EngineText.h"
#include "common/Words.h"
#include "manager/NotedField.h"
#include "manager/TrustQuestion.h"
#include "onvif/DeviceAddress.h"
#include "onvif/OnvifDevice.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

DevicePage::DevicePage(const CameraDescription& about, QWidget* parent)
    : QWidget(parent), m_certificate(about.onvifCertificate), m_address(new QLineEdit(about.onvifAddress)),
      m_trusted(new QLabel), m_finding(new QLabel), m_look(new QPushButton(word("&Look at its certificate"))),
      m_forget(new QPushButton(word("&Forget it")))
{
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_address->setObjectName("OnvifAddress");
    m_address->setMaxLength(1000);
    m_trusted->setObjectName("TrustedCertificate");
    m_trusted->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_finding->setObjectName("CertificateFinding");
    m_note = NotedField::add(form, word("&Device"), m_address);
    m_note->keepRoom();
    form->addRow(word("Trusted"), m_trusted);
    form->addRow(QString(), makeButtons());
    form->addRow(QString(), m_finding);
    for (QLabel* label : {m_trusted, m_finding})
        label->setWordWrap(true);
    connect(m_address, &QLineEdit::textChanged, this, &DevicePage::check);
    connect(m_look, &QPushButton::clicked, this, &DevicePage::look);
    connect(m_forget, &QPushButton::clicked, this, [this] { setCertificate(QString()); });
    setCertificate(m_certificate);
}

QWidget* DevicePage::makeButtons()
{
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    m_look->setObjectName("LookAtCertificate");
    m_forget->setObjectName("ForgetCertificate");
    for (QPushButton* button : {m_look, m_forget}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch();
    return buttons;
}

void DevicePage::fill(CameraDescription* about) const
{
    const QUrl address = deviceAddress(m_address->text());
    about->onvifAddress = address.toString();
    about->onvifCertificate = address.scheme() == "https" ? m_certificate : QString();
}

bool DevicePage::isValid() const
{
    return deviceAddress(m_address->text()).isValid();
}

void DevicePage::check()
{
    const bool isSecure = deviceAddress(m_address->text()).scheme() == "https";
    m_note->setNote(isValid() ? QString() : word("it is no address"));
    m_look->setEnabled(isSecure && !m_device);
    m_forget->setEnabled(!m_certificate.isEmpty());
    if (!isSecure)
        m_trusted->setText(word("Only https:// has certificates."));
    else if (m_certificate.isEmpty())
        m_trusted->setText(word("No certificate of the camera's own"));
    else
        m_trusted->setText("SHA-256\n" + fingerprintLines(m_certificate));
    Q_EMIT changed();
}

/// It is asked for its time alone, and told nothing.
void DevicePage::look()
{
    m_finding->setText(word("asking ..."));
    m_device = new OnvifDevice({deviceAddress(m_address->text()), {}, {}}, this);
    m_device->open([this](const OnvifFault& fault) { take(fault); });
    check();
}

void DevicePage::take(const OnvifFault& fault)
{
    const QString device = m_device->address().authority();
    std::exchange(m_device, nullptr)->deleteLater();
    check();
    using Kind = OnvifFault::Kind;
    if (fault.kind == Kind::NoAnswer || fault.kind == Kind::NotBuilt)
        return m_finding->setText(engineText(fault.text()));
    if (fault.kind != Kind::Untrusted)
        return m_finding->setText(word("Others vouch for its certificate."));
    if (fault.reason == m_certificate)
        return m_finding->setText(word("It still has this certificate."));
    m_finding->clear();
    auto* box = new TrustQuestion(device, fault.reason, this);
    connect(box, &TrustQuestion::trusted, this, [=, print = fault.reason] { setCertificate(print); });
    box->open();
}

void DevicePage::setCertificate(const QString& fingerprint)
{
    m_certificate = fingerprint;
    m_finding->clear();
    check();
}
