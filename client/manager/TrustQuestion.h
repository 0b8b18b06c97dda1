#pragma once

#include <QMessageBox>

/// A certificate's SHA-256 in two lines of groups of four digits.
QString fingerprintLines(QString fingerprint);

/// Asks whether the certificate of a device, which nobody vouches for, is to be trusted from now on. It goes
/// by itself once it is answered.
class TrustQuestion : public QMessageBox
{
    Q_OBJECT

public:
    /// `fingerprint` is the certificate's SHA-256 in hexadecimal digits.
    TrustQuestion(const QString& device, const QString& fingerprint, QWidget* parent);

Q_SIGNALS:
    void trusted();
};
