#pragma once

#include "cameras/SourceAddress.h"

#include <QWidget>

class QFormLayout;
class QLineEdit;
class QPlainTextEdit;

/// The indexes of several recorders in the settings, as `--index` takes them, one a line, and who this desk
/// is at their relays.
class SitesPage : public QWidget
{
    Q_OBJECT

public:
    SitesPage(const QStringList& indexes, const Login& relay);

    QStringList indexes() const;
    /// Without a user where live pictures come from the cameras alone.
    Login relay() const;
    /// Why they can't be kept, in the user's words; empty if they can.
    QString fault() const;

private:
    QFormLayout* relayForm();
    QString relayFault() const;

    QPlainTextEdit* m_lines;
    Login m_before;
    QLineEdit* m_user;
    QLineEdit* m_password;
};
