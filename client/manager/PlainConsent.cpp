#include "manager/PlainConsent.h"

#include "common/Words.h"

#include <QMessageBox>
#include <QPushButton>

PlainConsent::PlainConsent(bool isAllowed, QWidget* parent)
    : QCheckBox(word("&Even unprotected, if need be"), parent)
{
    setObjectName("PlainPassword");
    setChecked(isAllowed);
    connect(this, &QCheckBox::clicked, this, [this](bool isTicked) {
        if (isTicked)
            ask();
    });
}

void PlainConsent::ask()
{
    setChecked(false);
    auto* box =
        new QMessageBox(QMessageBox::Warning, word("Password"), word("Send the password unprotected?"),
                        QMessageBox::Yes | QMessageBox::No, this);
    box->setObjectName("AllowPlainPassword");
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setInformativeText(
        word("Whoever listens in the network can read it then. Only for cameras that take nothing else."));
    box->setDefaultButton(QMessageBox::No);
    box->button(QMessageBox::Yes)->setText(word("A&llow"));
    connect(box->button(QMessageBox::Yes), &QPushButton::clicked, this, [this] { setChecked(true); });
    box->open();
}
