#include "support/DeckTestCase.h"
#include "text/CLanguageFile.h"

#include <QDirIterator>
#include <QRegularExpression>

namespace {

/// What every translation has to give.
const QStringList KEY_LIST =
    QString("PaneDeck.Normal Split|PaneDeck.Custom Split|PaneDeck.Edit split|PaneDeck.download|"
            "PaneDeck.full Screen|PaneDeck.Quick|PaneDeck.Slow|PaneDeck.Stop|PaneDeck.Snap|PaneDeck.Record|"
            "PaneDeck.Time Clip|PaneDeck.Open|PaneDeck.Switch Bar|PaneDeck.Pause|PaneDeck.Play|"
            "PlayBack.FreezePlay|PlayBack.FreezeStop|PaneDeck.Custom Layout|PaneDeck.Row|PaneDeck.Col|"
            "PaneDeck.Ok|PaneDeck.Cancel|PaneDeck.Coustom Split|PaneDeck.Prive page|PaneDeck.Next page|"
            "PaneDeck.Save View|PaneDeck.Close btnRemote Control|PaneDeck.Local Record|PaneDeck.Snapshot|"
            "PaneDeck.Audio|LiveView.Instant playback|PaneDeck.Zoom|PaneDeck.Close Video|channels|"
            "Pane %1|%1 panes|Custom layout %1|idle|playing|alarm|recording|sound on|selected|row %1|column "
            "%1|Time|Position|Volume|Close")
        .split('|');
const QSet<QString> KEYS(KEY_LIST.begin(), KEY_LIST.end());

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Every key that the sources ask for.
QSet<QString> KeysOfSources()
{
    static const QRegularExpression key(
        "\"((?:PaneDeck|PlayBack|LiveView)\\.[^\"\\n]+)\"|LangText\\(\"([^\"]+)\"\\)");
    QSet<QString> keys;
    for (QDirIterator it(QFINDTESTDATA("../../src"), {"*.cpp", "*.h"}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();) {
        auto matches = key.globalMatch(Content(it.next()));
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            keys.insert(match.captured(match.lastCapturedIndex()));
        }
    }
    return keys;
}

/// In one text, so that a failure names them.
QString Joined(const QSet<QString>& keys)
{
    return QStringList(keys.values()).join(", ");
}

} // namespace

/// The language files that come with the library.
class tst_languages : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void sourcesAskForKnownKeys();
    void hasEveryKey_data();
    void hasEveryKey();
    void readsAsWritten_data() { hasEveryKey_data(); }
    void readsAsWritten();
};

void tst_languages::sourcesAskForKnownKeys()
{
    const QSet<QString> asked = KeysOfSources();
    QVERIFY(asked.contains("PaneDeck.Normal Split"));
    QCOMPARE(Joined(asked - KEYS), QString());
}

void tst_languages::hasEveryKey_data()
{
    QTest::addColumn<QString>("path");
    const QDir dir(QFINDTESTDATA("../../languages"));
    const QStringList names = dir.entryList({"*.ini"}, QDir::Files);
    QVERIFY(names.contains("English.ini"));
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << dir.filePath(name);
}

void tst_languages::hasEveryKey()
{
    QFETCH(QString, path);
    QStringList lines = QString::fromUtf8(Content(path)).section("[Client]\n", 0, 0).split('\n');
    QCOMPARE(lines.takeFirst(), QString("[String]"));
    QCOMPARE(lines.takeLast(), QString());
    QSet<QString> keys;
    for (const QString& line : lines)
        keys.insert(line.section('=', 0, 0));
    QCOMPARE(Joined(keys - KEYS), QString());
    QCOMPARE(Joined(KEYS - keys), QString());
    QCOMPARE(lines.size(), keys.size());
}

void tst_languages::readsAsWritten()
{
    QFETCH(QString, path);
    const QByteArray content = Content(path);
    QCOMPARE(QString::fromUtf8(content).toUtf8(), content);
    const QString text = QString::fromUtf8(content);
    const CLanguageFile file(path);
    QString section;
    for (const QString& line : text.split('\n')) {
        if (line.startsWith('['))
            section = line.mid(1, line.size() - 2);
        if (line.isEmpty() || line.startsWith('['))
            continue;
        const QString key = line.section('=', 0, 0);
        const QString value = file.GetValue(section + "/" + key);
        QCOMPARE(key + "=" + value, line);
        QVERIFY2(!value.trimmed().isEmpty(), qPrintable(key));
        const bool beforeSpeed = key == "PaneDeck.Quick" || key == "PaneDeck.Slow";
        QCOMPARE(value, value.trimmed() + (beforeSpeed ? " " : ""));
    }
}

QTEST_MAIN(tst_languages)

#include "tst_languages.moc"
