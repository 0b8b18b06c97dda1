#include "manager/TrustQuestion.h"

#include "common/Words.h"

#include <QPushButton>

TrustQuestion::TrustQuestion(const QString& device, QString fingerprint, QWidget* parent)
    : QMessageBox(Question, word("Find cameras"),
                  word("Nobody vouches for the certificate of %1. Trust it from now on?").arg(device),
                  Yes | No, parent)
{
    setObjectName("TrustCamera");
    setAttribute(Qt::WA_DeleteOnClose);
    setTextFormat(Qt::PlainText);
    for (int i = fingerprint.size() - 4; i > 0; i -= 4)
        fingerprint.insert(i, i == fingerprint.size() / 2 ? '\n' : ' ');
    setInformativeText("SHA-256\n" + fingerprint.toUpper());
    setDefaultButton(No);
    button(Yes)->setText(word("&Trust"));
    connect(button(Yes), &QPushButton::clicked, this, &TrustQuestion::trusted);
}
