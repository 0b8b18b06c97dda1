#include "manager/AddressPage.h"

#include "cameras/AddressFault.h"
#include "cameras/CameraList.h"
#include "common/EngineText.h"
#include "common/Words.h"
#include "manager/NotedField.h"
#include "manager/PlainConsent.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>

namespace {

constexpr int LongestText = 1000;
constexpr const char* TransportNames[] = {"Automatic", "TCP", "UDP"};
constexpr const char* PtzNames[] = {"None", "ONVIF"};

QLineEdit* lineOf(const QString& text, const QString& example = {})
{
    auto* line = new QLineEdit(text);
    line->setMaxLength(LongestText);
    line->setPlaceholderText(example);
    return line;
}

} // namespace

AddressPage::AddressPage(const CameraList& cameras, const CameraDescription& about, QWidget* parent)
    : QWidget(parent), m_cameras(cameras), m_id(about.id), m_name(lineOf(about.name)), m_group(new QComboBox),
      m_main(lineOf(about.mainUrl, word("for example %1").arg("rtsp://192.168.1.20/stream1"))),
      m_small(lineOf(about.smallUrl)), m_user(lineOf(about.user)), m_password(lineOf(QString())),
      m_plain(new PlainConsent(about.isPlainAllowed)), m_transport(new QComboBox), m_ptz(new QComboBox),
      m_enabled(new QCheckBox(word("&On")))
{
    QFormLayout* form = addNames(about);
    addLogin(form, about);
    addChoices(form, about);
    setFocusProxy(m_name);
    for (QLineEdit* field : {m_name, m_main, m_small})
        connect(field, &QLineEdit::textChanged, this, &AddressPage::check);
    for (QLineEdit* field : {m_main, m_small})
        connect(field, &QLineEdit::editingFinished, this, [this, field] { splitLogin(field); });
    connect(m_password, &QLineEdit::textEdited, this, [this] { m_isPasswordTyped = true; });
}

QFormLayout* AddressPage::addNames(const CameraDescription& about)
{
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_name->setObjectName("CameraName");
    m_main->setObjectName("CameraAddress");
    QStringList groups;
    for (int i = 0; i < m_cameras.count(); ++i)
        groups.append(m_cameras.at(i).about.group);
    groups.removeDuplicates();
    groups.removeAll(QString());
    m_group->setEditable(true);
    m_group->addItems(groups);
    m_group->setEditText(about.group);
    m_group->lineEdit()->setMaxLength(LongestText);
    m_group->lineEdit()->setPlaceholderText(word("for example %1").arg(word("Site/Building")));
    m_nameNote = NotedField::add(form, word("&Name"), m_name);
    NotedField::add(form, word("&Group"), m_group);
    m_mainNote = NotedField::add(form, word("&Address"), m_main);
    m_smallNote = NotedField::add(form, word("&Small stream"), m_small);
    for (NotedField* noted : {m_nameNote, m_mainNote, m_smallNote})
        noted->keepRoom();
    m_name->selectAll();
    return form;
}

void AddressPage::addLogin(QFormLayout* form, const CameraDescription& about)
{
    m_user->setObjectName("CameraUser");
    m_password->setObjectName("CameraPassword");
    m_password->setEchoMode(QLineEdit::Password);
    if (!m_cameras.passwordOf(about.id).isEmpty())
        m_password->setPlaceholderText(word("unchanged"));
    NotedField::add(form, word("&User"), m_user);
    NotedField::add(form, word("&Password"), m_password);
    form->addRow(QString(), m_plain);
}

void AddressPage::addChoices(QFormLayout* form, const CameraDescription& about)
{
    for (int i = 0; i < int(std::size(TransportNames)); ++i)
        m_transport->addItem(word(TransportNames[i]));
    m_transport->setCurrentIndex(int(about.transport));
    for (int i = 0; i < int(std::size(PtzNames)); ++i)
        m_ptz->addItem(word(PtzNames[i]));
    m_ptz->setCurrentIndex(int(about.ptz));
    m_enabled->setChecked(about.isEnabled);
    NotedField::add(form, word("T&ransport"), m_transport);
    NotedField::add(form, word("PT&Z"), m_ptz);
    form->addRow(QString(), m_enabled);
}

void AddressPage::fill(CameraDescription* about) const
{
    about->name = m_name->text().simplified();
    about->group = m_group->currentText().simplified();
    about->mainUrl = m_main->text().trimmed();
    about->smallUrl = m_small->text().trimmed();
    const Login login = takeLogin(&about->mainUrl);
    takeLogin(&about->smallUrl);
    about->user = login.user.isEmpty() ? m_user->text().trimmed() : login.user;
    about->isPlainAllowed = m_plain->isChecked();
    about->transport = SourceAddress::Transport(m_transport->currentIndex());
    about->ptz = CameraDescription::Ptz(m_ptz->currentIndex());
    about->isEnabled = m_enabled->isChecked();
}

std::optional<QString> AddressPage::password() const
{
    QString url = m_main->text().trimmed();
    const Login login = takeLogin(&url);
    if (!login.password.isEmpty())
        return login.password;
    return m_isPasswordTyped ? std::optional(m_password->text()) : std::nullopt;
}

QString AddressPage::nameFault() const
{
    const QString name = m_name->text().simplified();
    if (name.isEmpty())
        return word("A name is needed");
    const CameraRecord* other = m_cameras.find(name);
    return other && other->about.id != m_id ? word("There is a camera of that name") : QString();
}

QString AddressPage::smallFault() const
{
    return m_small->text().trimmed().isEmpty() ? QString() : addressFault(m_small->text());
}

bool AddressPage::isValid() const
{
    return nameFault().isEmpty() && addressFault(m_main->text()).isEmpty() && smallFault().isEmpty();
}

void AddressPage::check()
{
    const auto note = [](const QLineEdit* field, const QString& fault) {
        return field->isModified() ? fault : QString();
    };
    m_nameNote->setNote(note(m_name, nameFault()));
    m_mainNote->setNote(note(m_main, engineText(addressFault(m_main->text()))));
    m_smallNote->setNote(note(m_small, engineText(smallFault())));
    Q_EMIT changed();
}

/// Who pastes an address with its login finds it where it belongs, and the password unreadable.
void AddressPage::splitLogin(QLineEdit* field)
{
    QString url = field->text().trimmed();
    const Login login = takeLogin(&url);
    if (login.user.isEmpty())
        return;
    field->setText(url);
    field->setModified(true);
    m_user->setText(login.user);
    if (!login.password.isEmpty()) {
        m_password->setText(login.password);
        m_isPasswordTyped = true;
    }
    check();
}
