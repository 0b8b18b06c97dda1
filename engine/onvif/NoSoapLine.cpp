#include "onvif/SoapLine.h"

#include <QTimer>

struct SoapLine::Private
{
};

SoapLine::SoapLine(QObject* parent) : QObject(parent) {}

SoapLine::~SoapLine() = default;

bool SoapLine::isBuilt()
{
    return false;
}

void SoapLine::setCredentials(const QString&, const QString&) {}

void SoapLine::setPlainAllowed(bool) {}

void SoapLine::setCertificate(const QString&) {}

void SoapLine::setClockOffset(qint64) {}

void SoapLine::call(const SoapRequest&, Receiver receiver)
{
    QTimer::singleShot(0, this, [receiver = std::move(receiver)] {
        receiver({{OnvifFault::Kind::NotBuilt, {}}, {}});
    });
}
