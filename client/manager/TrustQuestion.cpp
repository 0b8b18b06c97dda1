#include "manager/TrustQuestion.h"

#include "common/Words.h"

#include <QPushButton>

QString fingerprintLines(QString fingerprint)
{
    const int middle = fingerprint.size() / 2;
    for (int i = fingerprint.size() - 4; i > 0; i -= 4)
        fingerprint.insert(i, i == middle ? '\n' : ' ');
    return fingerprint.toUpper();
}

TrustQuestion::TrustQuestion(const QString& device, const QString& fingerprint, QWidget* parent)
    : QMessageBox(Question, word("Certificate"),
                  word("Nobody vouches for the certificate of %1. Trust it from now on?").arg(device),
                  Yes | No, parent)
{
    setObjectName("TrustCamera");
    setAttribute(Qt::WA_DeleteOnClose);
    setTextFormat(Qt::PlainText);
    setInformativeText("SHA-256\n" + fingerprintLines(fingerprint));
    setDefaultButton(No);
    button(Yes)->setText(word("&Trust"));
    connect(button(Yes), &QPushButton::clicked, this, &TrustQuestion::trusted);
}
