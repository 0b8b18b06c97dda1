#include "common/EngineText.h"
#include "common/Words.h"
#include "support/DeckTestCase.h"
#include "support/RunTests.h"

#include <QDirIterator>
#include <QRegularExpression>

namespace {

using Words = QMap<QString, QString>;

QString content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList captured(const QString& text, const QString& pattern)
{
    QStringList found;
    auto matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        found.append(match.captured(match.lastCapturedIndex()));
    }
    return found;
}

/// The words of a table in a source; ratios such as 4:3 read the same everywhere.
QSet<QString> wordsOfTable(const QString& source, const QString& table)
{
    QSet<QString> words;
    for (const QString& content : captured(source, "\\b" + table + "\\[\\] = \\{([^}]*)\\}")) {
        for (const QString& word : captured(content, "\"([^\"]*[a-z][^\"]*)\""))
            words.insert(word);
    }
    return words;
}

/// What one source asks for; a call in another form comes back as it is written.
QSet<QString> wordsOfSource(const QString& source)
{
    QSet<QString> words;
    for (const QString& call : captured(source, "\\bword\\((?!const char)([^\"][^)]*|\"[^\"]*\"\\)?)")) {
        if (call.startsWith('"') && call.endsWith("\")"))
            words.insert(call.mid(1, call.size() - 3));
        else if (const QString table = call.section('[', 0, 0); !wordsOfTable(source, table).isEmpty())
            words.unite(wordsOfTable(source, table));
        else
            words.insert("word(" + call);
    }
    return words;
}

/// The sources below a directory of the project.
QStringList sourcesOf(const QString& directory)
{
    QStringList sources;
    for (QDirIterator it(QFINDTESTDATA("../../" + directory), {"*.cpp", "*.h"}, QDir::Files,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        sources.append(content(it.next()));
    return sources;
}

QSet<QString> wordsOfClient()
{
    QSet<QString> words;
    for (const QString& source : sourcesOf("client"))
        words.unite(wordsOfSource(source));
    return words;
}

QString fileOf(const QString& language)
{
    return QFINDTESTDATA("../../languages/" + language + ".ini");
}

/// The section "Client" of a language's file.
Words translations(const QString& language)
{
    Words words;
    const QStringList lines = content(fileOf(language)).section("[Client]\n", 1).split('\n');
    for (const QString& line : lines) {
        if (!line.isEmpty())
            words.insert(line.section('=', 0, 0), line.section('=', 1));
    }
    return words;
}

QString joined(const QSet<QString>& words)
{
    return QStringList(words.values()).join(", ");
}

/// The keys that open the menus of the window's bar.
QStringList menuKeys(const Words& words)
{
    const QString source = content(QFINDTESTDATA("../../client/window/MainMenus.cpp"));
    QStringList keys;
    for (const QString& title : captured(source, "(?:addChoices|addMenu)\\(word\\(\"([^\"]*)\""))
        keys += captured(words.value(title, title).toUpper(), "&(.)");
    return keys;
}

} // namespace

/// The client's own words in every language.
class tst_words : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void everyWordIsTranslated_data();
    void everyWordIsTranslated();
    void marksStay_data() { everyWordIsTranslated_data(); }
    void marksStay();
    void menusOpenByKeysOfTheirOwn_data();
    void menusOpenByKeysOfTheirOwn();
    void readsASectionOfItsOwn();
    void saysWhatTheEngineSays();
};

void tst_words::everyWordIsTranslated_data()
{
    QTest::addColumn<QString>("language");
    for (const char* language : {"Arabic", "Chinese", "French", "German", "Spanish"})
        QTest::newRow(language) << language;
}

void tst_words::everyWordIsTranslated()
{
    QFETCH(QString, language);
    const QStringList translated = translations(language).keys();
    const QSet<QString> given(translated.begin(), translated.end());
    const QSet<QString> asked = wordsOfClient();
    QVERIFY(asked.contains("Live"));
    QVERIFY(asked.contains("Fill"));
    QCOMPARE(joined(asked - given), QString());
    QCOMPARE(joined(given - asked), QString());
}

void tst_words::marksStay()
{
    QFETCH(QString, language);
    const Words words = translations(language);
    for (auto it = words.begin(); it != words.end(); ++it) {
        const QString mark = "(%[0-9n]|&)";
        QStringList wanted = captured(it.key(), mark);
        QStringList found = captured(it.value(), mark);
        wanted.sort();
        found.sort();
        QVERIFY2(found == wanted, qPrintable(it.value()));
        QVERIFY2(!it.value().contains(QRegularExpression("[\\[\\]=]")), qPrintable(it.value()));
    }
}

void tst_words::menusOpenByKeysOfTheirOwn_data()
{
    everyWordIsTranslated_data();
    QTest::newRow("English") << "English";
}

void tst_words::menusOpenByKeysOfTheirOwn()
{
    QFETCH(QString, language);
    const QStringList keys = menuKeys(translations(language));
    QVERIFY(keys.size() >= 5);
    QVERIFY2(QSet<QString>(keys.begin(), keys.end()).size() == keys.size(), qPrintable(keys.join("")));
}

void tst_words::readsASectionOfItsOwn()
{
    QCOMPARE(word("Tour"), QString("Tour"));
    loadWords(QString());
    loadWords("/no/such/file.ini");
    QCOMPARE(word("Tour"), QString("Tour"));
    const Words words = translations("German");
    loadWords(fileOf("German"));
    for (auto it = words.begin(); it != words.end(); ++it)
        QCOMPARE(word(qPrintable(it.key())), it.value());
    QCOMPARE(word("channels"), QString("channels"));
    QCOMPARE(word("a word of nobody's"), QString("a word of nobody's"));
}

void tst_words::saysWhatTheEngineSays()
{
    loadWords(fileOf("German"));
    QCOMPARE(engineText("stopped"), QString("angehalten"));
    QCOMPARE(engineText("cannot open: no answer"), QString("lässt sich nicht öffnen: keine Antwort"));
    QCOMPARE(engineText("cannot write /a %2: b%1.mkv: No space left"),
             QString("/a %2: b%1.mkv lässt sich nicht schreiben: No space left"));
    QCOMPARE(engineText("cannot fly: no answer"), QString("cannot fly: no answer"));

    const QString engine = sourcesOf("engine").join('\n');
    const QString table = content(QFINDTESTDATA("../../client/common/EngineText.cpp"));
    for (const QString& form : wordsOfTable(table, "EngineLines")) {
        const QString start = form.section('%', 0, 0);
        QVERIFY2(engine.contains(start.endsWith(": ") ? start.chopped(2) : start), qPrintable(form));
    }
}

int main(int argc, char** argv)
{
    return RunTests<tst_words>(argc, argv);
}

#include "tst_words.moc"
