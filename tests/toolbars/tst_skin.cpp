#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "toolbars/CPictureIcon.h"
#include "toolbars/CSkinConfig.h"

#include <QDir>

class tst_skin : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void findsDirectories();
    void startsWithoutInstallation();
    void parsesColor();
    void readsBarStyle();
    void readsWidgetStyle();
    void keepsColorOfBadStyle();
    void buildsButtonStyle();
    void setsPictureIcon();
    void refusesObjects_data();
    void refusesObjects();
};

void tst_skin::findsDirectories()
{
    const Installation installation;
    const CSkinConfig* skin = CSkinConfig::Instance();
    QCOMPARE(skin->m_strResPath, installation.Root() + "/Resources");
    QCOMPARE(skin->m_strIconPath, installation.Root() + "/Resources/icons");
    QCOMPARE(skin->m_strButtonPath, installation.Root() + "/Resources/buttons");
    installation.Write("Resources/icons/IconSetting.Conf", "[PTZ]\nup=arrow-up.png\n");
    QCOMPARE(skin->GetIconPath("up"), skin->m_strIconPath + "/arrow-up.png");
    QCOMPARE(skin->GetIconPath("down"), QString());
    QCOMPARE(skin->GetIconPath(QString()), skin->m_strIconPath);
    QCOMPARE(skin->m_strRootPath, QString());
    const QString root = QDir::cleanPath(installation.Root() + "/../Resources");
    QDir().mkpath(root);
    CSkinConfig::Release();
    QCOMPARE(CSkinConfig::Instance()->m_strRootPath, root);
    QDir().rmdir(root);
}

void tst_skin::startsWithoutInstallation()
{
    const Installation nothing(0);
    CSkinConfig* skin = CSkinConfig::Instance();
    QCOMPARE(skin->m_flushColor, QColor(249, 249, 249, 255));
    QCOMPARE(skin->GetIconPath(QString()), QString());
    QCOMPARE(skin->GetIconPath("up"), QString());
    QCOMPARE(skin->m_nBarHeight, 28);
    QCOMPARE(skin->m_nOneScreenBtnWidth, 41);
    QCOMPARE(skin->GetConfValue("a/b", "none.conf"), QString());
    QCOMPARE(skin->GetConfValue(QString(), "none.conf"), QString());
}

void tst_skin::parsesColor()
{
    const QColor old(1, 2, 3, 77);
    const auto parsed = [&](const char* text) {
        QColor color = old;
        CSkinConfig::ParseColor(text, color);
        return color;
    };
    QCOMPARE(parsed("10:20:30"), QColor(10, 20, 30, 77));
    QCOMPARE(parsed("010:020:030"), QColor(10, 20, 30, 77));
    QCOMPARE(parsed("-5:256:2147483647"), QColor(0, 255, 255, 77));
    for (const char* text : {"", "102030", ":20:30", "10:20", "10:20:30:40", "10:20:", "0x10:20:30",
                             "10:green:30", "10:20:99999999999"})
        QVERIFY2(parsed(text) == old, text);
}

void tst_skin::readsBarStyle()
{
    const Installation installation;
    CSkinConfig* skin = CSkinConfig::Instance();
    installation.Write("Resources/OEMStyle.conf",
                       "[PaneDeck_MonitoBar]\nBarPlace=1\nContentSpace=2\nstopbtnMinWidth=3\n"
                       "stopbtnMaxWidth=4\nstopbtnHeight=5\nOneScreenbtnWidth=6\n"
                       "OneScreenbtnHeight=wide\nstyle=flat\n"
                       "[PaneDeck_Widget]\nBarHeight=9\nflushColor=1:2:3\n");
    skin->LoadBarStyle();
    const int sizes[] = {skin->m_nBarPlace,        skin->m_nContentSpace,      skin->m_nStopBtnMinWidth,
                         skin->m_nStopBtnMaxWidth, skin->m_nStopBtnHeight,     skin->m_nOneScreenBtnWidth,
                         skin->m_nBarHeight,       skin->m_nOneScreenBtnHeight};
    QCOMPARE(QVector<int>(std::begin(sizes), std::end(sizes)), (QVector<int>{1, 2, 3, 4, 5, 6, 0, 0}));
    QCOMPARE(skin->m_strBarStyle, QString("flat"));
    QCOMPARE(skin->m_flushColor, QColor(249, 249, 249));
}

void tst_skin::readsWidgetStyle()
{
    const Installation installation;
    CSkinConfig* skin = CSkinConfig::Instance();
    skin->m_strWidgetStyle = "old";
    installation.Write("Resources/OEMStyle.conf",
                       "[PaneDeck_Widget]\nflushColor=10:20:30\ntitleStyle=bold\n");
    skin->LoadWidgetStyle();
    QCOMPARE(skin->m_flushColor, QColor(10, 20, 30));
    QCOMPARE(skin->m_strTitleStyle, QString("bold"));
    QCOMPARE(skin->m_strWidgetStyle, QString());
    QCOMPARE(skin->m_nBarHeight, 28);
    QCOMPARE(skin->GetConfValue("PaneDeck_Widget/titleStyle", "OEMStyle.conf"), QString("bold"));
}

void tst_skin::keepsColorOfBadStyle()
{
    const Installation installation;
    CSkinConfig* skin = CSkinConfig::Instance();
    for (const char* line :
         {"", "flushColor=grey\n", "flushColor=1, 2, 3\n", "flushColor=@Variant(\\0\\0)\n"}) {
        installation.Write("Resources/OEMStyle.conf", QByteArray("[PaneDeck_Widget]\n") + line);
        skin->LoadWidgetStyle();
        QCOMPARE(skin->m_flushColor, QColor(249, 249, 249));
    }
}

void tst_skin::buildsButtonStyle()
{
    const Installation installation;
    installation.Write("Resources/buttons/Menu.Conf", "[Menu]\nNormal=n%2.png\nHover=h.png\nDisable=d.png\n");
    const CSkinConfig* skin = CSkinConfig::Instance();
    const QString expected = QString("QToolButton{background-image:url(DIR/n%2.png);}"
                                     "QToolButton:hover{background-image:url(DIR/h.png);}"
                                     "QToolButton:checked{background-image:url(DIR/);}"
                                     "QToolButton:disabled{background-image:url(DIR/d.png);}")
                                 .replace("DIR", skin->m_strButtonPath);
    QCOMPARE(skin->BuildButtonStyle("Menu", false, "Menu.Conf"), expected);
    QCOMPARE(skin->BuildButtonStyle("Menu", true, "Menu.Conf"),
             expected + "QToolButton::menu-indicator {image: None;}");
}

void tst_skin::setsPictureIcon()
{
    const Installation installation;
    installation.Write("Resources/icons/Bar.Conf", "[PaneDeck]\nlock=lock.png\n");
    installation.WritePicture("Resources/icons/lock.png", 21, 13, Qt::green);
    const QString path = installation.Root() + "/Resources/icons/lock.png";
    CPictureIcon button;
    button.SetPicture("lock", false, "Bar.Conf");
    QCOMPARE(button.iconSize(), QSize(21, 13));
    QCOMPARE(button.icon().pixmap(21, 13).toImage().pixelColor(20, 12), QColor(Qt::green));
    QCOMPARE(button.styleSheet(), QString());
    button.SetPicture("lock", true, "Bar.Conf");
    QCOMPARE(button.styleSheet(), "QToolButton{background-image:url(" + path + ")}");
    button.SetPicture("none", false, "Bar.Conf");
    button.resize(40, 40);
    QVERIFY(!button.grab().isNull());
}

void tst_skin::refusesObjects_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("height");
    QFile found(QFINDTESTDATA("../data/skin/list-of-a-billion.conf"));
    QVERIFY(found.open(QIODevice::ReadOnly));
    const QByteArray bomb = R"(Variant(\0\0\0\tNor0))";
    QTest::newRow("list of a billion") << "[x]\n" + found.readAll() << 0;
    QTest::newRow("plain") << "style=@" + bomb << 0;
    QTest::newRow("in a list") << "style=a, @" + bomb << 0;
    QTest::newRow("in quotes") << "style=\"@" + bomb + "\"" << 0;
    QTest::newRow("behind empty quotes") << "style=\"\" @" + bomb << 0;
    QTest::newRow("hexadecimal at sign") << R"(style=\x0040"")" + bomb << 0;
    QTest::newRow("octal at sign") << R"(style=\100)" + bomb << 0;
    QTest::newRow("behind a dropped escape") << R"(style=\q\x@)" + bomb << 0;
    QTest::newRow("on the next line") << "style=\\\n@" + bomb << 0;
    QTest::newRow("word in escapes") << R"(style=@\x56)" + bomb.mid(1) << 0;
    QTest::newRow("behind many blanks") << "style=" + QByteArray(300000, ' ') + "@" + bomb << 0;
    QTest::newRow("at sign inside") << QByteArray("style=bar@2x.png") << 5;
    QTest::newRow("word in pieces") << R"(style="@"  "V"ar""i)" + bomb.mid(4) << 0;
    QTest::newRow("at sign before another word") << QByteArray("style=@home\nwidth=\"@Dark\", @, @V\n") << 5;
    QTest::newRow("doubled at sign") << QByteArray("style=@@home") << 5;
    QTest::newRow("bytes") << QByteArray("style=@ByteArray(flat)") << 5;
}

void tst_skin::refusesObjects()
{
    QFETCH(QByteArray, line);
    QFETCH(int, height);
    const Installation installation;
    installation.Write("Resources/OEMStyle.conf", "[PaneDeck_MonitoBar]\nBarHeight=5\n" + line + "\n");
    CSkinConfig* skin = CSkinConfig::Instance();
    skin->LoadBarStyle();
    QCOMPARE(skin->m_nBarHeight, height);
}

QTEST_MAIN(tst_skin)

#include "tst_skin.moc"
