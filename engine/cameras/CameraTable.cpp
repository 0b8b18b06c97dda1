#include "cameras/CameraTable.h"

#include "cameras/AddressFault.h"

#include <QUrl>

namespace {

constexpr int MostRows = 4096;
constexpr int LongestField = 4096;

const QStringList Columns{"name",     "group",     "main",      "small",       "user",
                          "password", "transport", "recording", "sensitivity", "enabled"};
const QStringList PlainColumns{"name", "main", "user", "password"};
const QStringList Transports{"auto", "tcp", "udp"};
const QStringList Recordings{"always", "motion", "never"};

/// The fields of all lines; a quoted one may hold what parts fields and lines.
class Fields
{
public:
    explicit Fields(const QString& text) : m_text(text) {}

    QVector<QStringList> rows()
    {
        for (const QChar sign : m_text)
            take(sign);
        endRow();
        return m_rows;
    }

private:
    void take(QChar sign)
    {
        if (m_wasQuote && sign == '"') {
            m_field += sign;
            m_wasQuote = false;
            return;
        }
        if (std::exchange(m_wasQuote, false))
            m_isQuoted = false;
        if (m_isQuoted && sign == '"')
            m_wasQuote = true;
        else if (m_isQuoted)
            m_field += sign;
        else if (sign == '"' && m_field.trimmed().isEmpty())
            m_isQuoted = true;
        else if (sign == '\n' || sign == '\r')
            endRow();
        else if (sign == ',' || sign == ';' || sign == '\t')
            endField();
        else
            m_field += sign;
    }

    void endField()
    {
        m_row.append(m_field.trimmed().left(LongestField));
        m_field.clear();
    }

    void endRow()
    {
        endField();
        if (m_row != QStringList(QString()))
            m_rows.append(m_row);
        m_row.clear();
        m_isQuoted = m_wasQuote = false;
    }

    const QString& m_text;
    QVector<QStringList> m_rows;
    QStringList m_row;
    QString m_field;
    bool m_isQuoted = false;
    bool m_wasQuote = false;
};

/// The columns of a table's first line; none if it is no such line.
QStringList columnsOf(const QStringList& row)
{
    QStringList columns;
    for (const QString& field : row)
        columns.append(field.toLower());
    return columns.contains("name") && columns.contains("main") ? columns : QStringList();
}

QString freeName(const QString& name, const QStringList& taken)
{
    QString free = name;
    for (int i = 2; taken.contains(free); ++i)
        free = QString("%1 (%2)").arg(name).arg(i);
    return free;
}

class Row
{
public:
    Row(const QStringList& columns, const QStringList& fields) : m_columns(columns), m_fields(fields) {}

    QString text(const char* column) const
    {
        const int index = m_columns.indexOf(QLatin1String(column));
        return index < 0 ? QString() : m_fields.value(index);
    }

    template <class Choice> Choice choice(const char* column, const QStringList& choices) const
    {
        return Choice(qMax(0, choices.indexOf(text(column).toLower())));
    }

private:
    const QStringList& m_columns;
    const QStringList& m_fields;
};

CameraDescription cameraOf(const Row& row)
{
    CameraDescription camera;
    camera.id = newCameraId();
    camera.name = row.text("name").simplified();
    camera.group = row.text("group").simplified();
    camera.mainUrl = row.text("main");
    camera.smallUrl = row.text("small");
    camera.user = row.text("user");
    camera.transport = row.choice<SourceAddress::Transport>("transport", Transports);
    camera.recording = row.choice<CameraDescription::Recording>("recording", Recordings);
    const int sensitivity = row.text("sensitivity").toInt();
    if (sensitivity >= CameraDescription::LeastSensitivity &&
        sensitivity <= CameraDescription::MostSensitivity)
        camera.sensitivity = sensitivity;
    camera.isEnabled = row.text("enabled").toLower() != "no";
    return camera;
}

/// Of a line without a table: "name, address, ..." or an address alone.
QStringList withName(const QStringList& fields)
{
    if (!addressFault(fields.first()).isEmpty())
        return fields;
    QString url = fields.first();
    takeLogin(&url);
    const QString host = QUrl(url).host();
    return QStringList(host.isEmpty() ? url : host) + fields;
}

QString rowFault(const CameraDescription& camera)
{
    if (camera.name.isEmpty())
        return "a camera has no name";
    const QString fault = addressFault(camera.mainUrl);
    return fault.isEmpty() && !camera.smallUrl.isEmpty() ? addressFault(camera.smallUrl) : fault;
}

QString quoted(QString field)
{
    static const QString Special("\",;\t\n\r");
    const bool needsQuotes =
        std::any_of(field.begin(), field.end(), [](QChar sign) { return Special.contains(sign); }) ||
        field != field.trimmed();
    return needsQuotes ? '"' + field.replace('"', "\"\"") + '"' : field;
}

} // namespace

CameraTable::Content CameraTable::read(const QString& text, const QStringList& taken)
{
    Content content;
    QVector<QStringList> rows = Fields(text).rows();
    QStringList names = taken;
    QStringList columns = rows.isEmpty() ? QStringList() : columnsOf(rows.first());
    const bool isTable = !columns.isEmpty();
    if (isTable)
        rows.removeFirst();
    else
        columns = PlainColumns;
    for (int i = 0; i < qMin(MostRows, rows.size()); ++i) {
        const QStringList fields = isTable ? rows.at(i) : withName(rows.at(i));
        const Row row(columns, fields);
        CameraDescription camera = cameraOf(row);
        const Login login = takeLogin(&camera.mainUrl);
        takeLogin(&camera.smallUrl);
        if (!login.user.isEmpty())
            camera.user = login.user;
        const QString fault = rowFault(camera);
        if (!fault.isEmpty()) {
            content.faults.append(QString("%1: %2").arg(camera.name, fault));
            continue;
        }
        camera.name = freeName(camera.name, names);
        names.append(camera.name);
        const QString password = login.password.isEmpty() ? row.text("password") : login.password;
        if (!password.isEmpty())
            content.passwords.insert(camera.id, password);
        content.cameras.append(camera);
    }
    return content;
}

QString CameraTable::write(const QVector<CameraDescription>& cameras,
                           const QHash<QString, QString>& passwords)
{
    QString text = Columns.join(',') + '\n';
    for (const CameraDescription& camera : cameras) {
        const QStringList fields{camera.name,
                                 camera.group,
                                 camera.mainUrl,
                                 camera.smallUrl,
                                 camera.user,
                                 passwords.value(camera.id),
                                 Transports.at(int(camera.transport)),
                                 Recordings.at(int(camera.recording)),
                                 QString::number(camera.sensitivity),
                                 camera.isEnabled ? "yes" : "no"};
        QStringList line;
        for (const QString& field : fields)
            line.append(quoted(field));
        text += line.join(',') + '\n';
    }
    return text;
}
