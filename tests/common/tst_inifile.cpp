#include "common/IniFile.h"
#include "support/DeckTestCase.h"
#include "support/SeededGenerator.h"

#include <QTemporaryDir>

namespace {

/// What QSettings decodes if it is let: an object that counts.
struct Counted
{
    static int s_decoded;
};
int Counted::s_decoded = 0;

QDataStream& operator<<(QDataStream& stream, const Counted&)
{
    return stream;
}

QDataStream& operator>>(QDataStream& stream, Counted&)
{
    ++Counted::s_decoded;
    return stream;
}

class IniWriter
{
public:
    IniWriter(QRandomGenerator& random, bool wild) : m_random(random), m_wild(wild) {}

    QByteArray Text()
    {
        QByteArray text = OneOf({"", "", "\xEF\xBB\xBF"});
        for (int lines = m_random.bounded(1, 9); lines > 0; --lines)
            text += Line() + OneOf({"\n", "\r\n", "\r", m_wild ? "" : "\n"});
        return text;
    }

    QByteArray OneOf(const QVector<QByteArray>& texts)
    {
        return texts.at(m_random.bounded(int(texts.size())));
    }

private:
    QByteArray Line()
    {
        const QByteArray key =
            OneOf({"style", "x", "a/x", "a\\x", "%73tyle", "General/x", m_wild ? "a\"b" : "b"});
        switch (m_random.bounded(6)) {
        case 0:
        case 1:
            return OneOf({"[", "[", " \t[", ";[", "\v["}) +
                   OneOf({"style", " style ", "sty%6ce", "%U0073tyle", "other", "style/a", "style\\a",
                          "general", "%General", "", "st;yle", "s%tyle", "%U73tyle"}) +
                   OneOf({"]", "]", "] x", "", "\\\n]"});
        case 2:
            return key + OneOf({m_wild ? "=\"" : "=", m_wild ? "=a\\" : "=a", "=;", "=1;", "", ";"});
        case 3:
            return key + OneOf({"=1", "=a, b", "=@@home", "=@ByteArray(a)", "=\"1\n[style]\n\""});
        default:
            return key + " = " + OneOf({"", "a,", "\"a\", ", "1 "}) + Object() +
                   OneOf({"", m_wild ? " " : "", ", a"});
        }
    }

    /// The object in as many disguises as a file may give it.
    QByteArray Object()
    {
        QByteArray text = OneOf({"", "", m_wild ? "\xEF\xBB\xBF" : ""});
        for (const char c : QByteArray("@Variant(")) {
            text += m_random.bounded(4) ? "" : OneOf({"\"\"", "\"\" ", "\\q", "\\\n", "\\x", "\\8", "\\ "});
            const QByteArray octal = QByteArray::number(c, 8), hexadecimal = QByteArray::number(c, 16);
            text += OneOf({QByteArray(1, c), QByteArray(1, c), QByteArray(1, c), "\\" + octal,
                           "\\x" + hexadecimal, "\\xf00" + hexadecimal, "\\1000" + octal});
        }
        return text + R"(\0\0\0\x7f\0\0\0\bCounted\0))";
    }

    QRandomGenerator& m_random;
    bool m_wild; ///< with more ways of being harmless than can be told apart
};

} // namespace

Q_DECLARE_METATYPE(Counted)

class tst_inifile : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsWhatCanBeReadSafely();
};

/// QSettings itself tells which files are dangerous for which key.
void tst_inifile::readsWhatCanBeReadSafely()
{
#if QT_VERSION_MAJOR < 6
    qRegisterMetaTypeStreamOperators<Counted>("Counted");
#else
    qRegisterMetaType<Counted>("Counted");
#endif
    const QTemporaryDir directory;
    QRandomGenerator random = SeededGenerator();
    int refused = 0, read = 0;
    for (int i = 0; i < 2000; ++i) {
        const bool wild = i % 2 == 0;
        IniWriter writer(random, wild);
        const QByteArray text = writer.Text();
        const QString path = directory.filePath(QString::number(i));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        file.close();
        const QString key = writer.OneOf(
            {"style/style", "style/x", wild ? "/style//a/x" : "/style//x", "x", "/style", "General/x"});
        Counted::s_decoded = 0;
        const QVariant value = IniFile(path, "UTF-8").Value(key);
        QVERIFY2(Counted::s_decoded == 0, text);
        QSettings settings(path, QSettings::IniFormat);
#if QT_VERSION_MAJOR < 6
        settings.setIniCodec("UTF-8");
#endif
        const QVariant expected = settings.value(key);
        const bool dangerous = Counted::s_decoded > 0;
        QVERIFY2(wild || value == (dangerous ? QVariant() : expected), text + "\nkey " + key.toUtf8());
        refused += dangerous;
        read += expected.isValid() && !dangerous;
    }
    QVERIFY2(refused > 90 && read > 50, qPrintable(QString("%1 %2").arg(refused).arg(read)));
}

QTEST_MAIN(tst_inifile)

#include "tst_inifile.moc"
