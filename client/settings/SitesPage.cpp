#include "settings/SitesPage.h"

#include "common/SiteAddress.h"
#include "common/Words.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSet>
#include <QVBoxLayout>

SitesPage::SitesPage(const QStringList& indexes, const Login& relay)
    : m_lines(new QPlainTextEdit), m_before(relay), m_user(new QLineEdit(relay.user)),
      m_password(new QLineEdit)
{
    auto* about =
        new QLabel(word("Sites to show in place of the own cameras from the next start on, a line each:"));
    auto* form = new QLabel("North=postgresql://operator@db.example/cameras");
    auto* passwords = new QLabel(word("Passwords belong into libpq's service or password file."));
    for (QLabel* label : {about, form, passwords})
        label->setWordWrap(true);
    form->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_lines->setObjectName("SettingsSites");
    m_lines->setAccessibleName(word("Sites"));
    m_lines->setTabChangesFocus(true);
    m_lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_lines->setLayoutDirection(Qt::LeftToRight);
    m_lines->setPlainText(indexes.join('\n'));
    auto* column = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(about), static_cast<QWidget*>(form)})
        column->addWidget(part);
    column->addWidget(m_lines, 1);
    column->addWidget(passwords);
    column->addLayout(relayForm());
}

QFormLayout* SitesPage::relayForm()
{
    m_user->setObjectName("SettingsRelayUser");
    m_password->setObjectName("SettingsRelayPassword");
    m_password->setEchoMode(QLineEdit::Password);
    if (!m_before.password.isEmpty())
        m_password->setPlaceholderText(word("unchanged"));
    auto* about = new QLabel(word("Live pictures by the sites' relays, where this user may look:"));
    about->setWordWrap(true);
    auto* form = new QFormLayout;
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    form->addRow(about);
    form->addRow(word("&User at relays:"), m_user);
    form->addRow(word("&Password at relays:"), m_password);
    return form;
}

Login SitesPage::relay() const
{
    const QString user = m_user->text().trimmed();
    // A password belongs to its user.
    const bool isKept = m_password->text().isEmpty() && user == m_before.user;
    return {user, isKept ? m_before.password : m_password->text()};
}

QString SitesPage::relayFault() const
{
    const Login login = relay();
    const bool isWhole = login.user.isEmpty() == login.password.isEmpty();
    return isWhole && !login.user.contains(':') && !login.user.contains('#')
               ? QString()
               : word("A user at relays needs a password, and a name without : and #");
}

QStringList SitesPage::indexes() const
{
    QStringList indexes;
    const QStringList lines = m_lines->toPlainText().split('\n');
    for (const QString& line : lines) {
        if (!line.trimmed().isEmpty())
            indexes.append(line.trimmed());
    }
    return indexes;
}

QString SitesPage::fault() const
{
    QSet<QString> names;
    const QStringList all = indexes();
    for (int i = 0; i < all.size(); ++i) {
        QString error;
        const std::optional<SiteAddress> site = SiteAddress::parse(all.at(i), &error);
        if (!site)
            return word("Site %1 has no address of an index, or one with a password").arg(i + 1);
        if (names.contains(site->name))
            return word("Two sites are called %1").arg(site->name);
        names.insert(site->name);
    }
    return relayFault();
}
