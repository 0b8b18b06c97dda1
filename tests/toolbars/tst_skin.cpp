#include "support/DeckTestCase.h"
#include "support/Installation.h"
#include "support/Mouse.h"
#include "toolbars/CSkinConfig.h"
#include "toolbars/CVideoPicButton.h"

#include <QDir>

namespace {

const QStringList States = {"Normal",      "Hover",      "Click",      "Disable",
                            "CheckNormal", "CheckHover", "CheckClick", "CheckDisable"};

QColor ColorOf(int state)
{
    return QColor(10 + 30 * state, 0, 0);
}

/// The state whose picture fills the button's background, -1 if none does.
int ShownState(const QWidget& button)
{
    const QImage picture = button.palette().brush(button.backgroundRole()).textureImage();
    for (int state = 0; state < States.size(); ++state) {
        if (!picture.isNull() && picture.pixelColor(0, 0) == ColorOf(state))
            return state;
    }
    return -1;
}

/// An installation with a picture for each state of a button.
struct Pictures : Installation
{
    explicit Pictures(const QByteArray& colors = QByteArray())
    {
        QByteArray section = "[Bar]\n";
        for (int state = 0; state < States.size(); ++state) {
            const QByteArray name = QByteArray::number(state) + ".png";
            WritePicture("Resources/buttons/" + name, 4, 4, ColorOf(state));
            section += States.at(state).toLatin1() + "=" + name + "\n";
        }
        Write("Resources/buttons/Pic.Conf", section + colors);
    }
};

void Do(CVideoPicButton& button, QChar deed)
{
    const QPoint middle(5, 5);
    switch (deed.toLatin1()) {
    case 'E':
        return Mouse::Enter(&button);
    case 'L':
        return Mouse::Leave(&button);
    case 'P':
        return Mouse::Press(&button, middle);
    case 'R':
        return Mouse::Release(&button, middle);
    case 'S':
        return button.resize(button.size() + QSize(1, 1));
    case 'c':
        return button.setChecked(!button.isChecked());
    default:
        button.SetBtnEnabled(deed == '+');
    }
}

} // namespace

class tst_skin : public DeckTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void buttonShowsItsState();
    void buttonUsesEveryPixel();
    void buttonWritesSheets();
    void buttonLivesWithoutPictures();
    void findsDirectories();
    void parsesColor();
    void readsStyles();
    void refusesObjectsBesideItsKeys();
};

void tst_skin::buttonShowsItsState()
{
    const Pictures pictures;
    // Let go outside and inside, checked, disabled under the mouse, resized.
    const std::tuple<bool, const char*, const char*> rows[] = {
        {false, "EPLRE", "12201"},   {true, "EPRLPLR", "1264662"}, {true, "ccESPS", "621122"},
        {false, "E-LES+", "133330"}, {true, "c-ELS+", "677774"},   {false, "EPSLS", "12222"}};
    for (const auto& [checkable, deeds, states] : rows) {
        CVideoPicButton button;
        button.setCheckable(checkable);
        button.resize(20, 20);
        button.show();
        button.LoadPictures("Bar", false, "Pic.Conf");
        QCOMPARE(ShownState(button), 0);
        QCOMPARE(button.palette().brush(button.backgroundRole()).textureImage().size(), button.size());
        QString seen;
        for (const QChar deed : QString(deeds)) {
            Do(button, deed);
            seen += QString::number(ShownState(button));
        }
        QCOMPARE(seen, QString(states));
    }
}

void tst_skin::buttonUsesEveryPixel()
{
    const Pictures pictures;
    CVideoPicButton button;
    button.setAutoRaise(true);
    button.resize(20, 20);
    QImage lines(button.size() * button.devicePixelRatioF(), QImage::Format_RGB32);
    for (int i = 0; i < lines.width() * lines.height(); ++i)
        lines.setPixel(i % lines.width(), i / lines.width(), i % lines.width() % 2 ? 0xffffffff : 0xff000000);
    const QString suffix = button.devicePixelRatioF() == 2 ? "@2x.png" : ".png";
    QVERIFY(lines.save(pictures.Root() + "/Resources/buttons/0" + suffix));
    button.LoadPictures("Bar", false, "Pic.Conf");
    lines.setDevicePixelRatio(button.devicePixelRatioF());
    QCOMPARE(button.grab().toImage().convertToFormat(QImage::Format_RGB32), lines);
}

void tst_skin::buttonWritesSheets()
{
    const std::tuple<bool, const char*, const char*, const char*> rows[] = {
        {true, "FontNormal=red\nFontHover=lime\n", " color:lime;PIC1", " color:;PIC6"},
        {true, "FontHover=red\n", "PIC1", "PIC6"},
        {false, "FontNormal=red\nFontClick=blue\n", " color:", " color:blue"}};
    for (const auto& [sheet, colors, hover, checkedClick] : rows) {
        const Pictures pictures(colors);
        const auto inFull = [&](QString text) {
            const QString url = "background-image:url(" + pictures.Root() + "/Resources/buttons/";
            return "QToolButton{" + text.replace("PIC1", url + "1.png)").replace("PIC6", url + "6.png)") +
                   "}";
        };
        CVideoPicButton button;
        button.setCheckable(true);
        button.show();
        button.LoadPictures("Bar", sheet, "Pic.Conf");
        Do(button, 'E');
        QCOMPARE(button.styleSheet(), inFull(hover));
        button.ShowState(6);
        QCOMPARE(button.styleSheet(), inFull(checkedClick));
        for (int state : {-1, 8, INT_MIN}) {
            button.ShowState(state);
            QCOMPARE(button.styleSheet(), inFull(checkedClick));
        }
    }
}

void tst_skin::buttonLivesWithoutPictures()
{
    const Installation installation;
    installation.Write("Resources/buttons/Broken.Conf", "[Bar]\nNormal=broken.png\nHover=../..\nClick=\n");
    installation.Write("Resources/buttons/broken.png", "\x89PNG\r\n\x1a\n");
    for (const char* file : {"None.Conf", "Broken.Conf", "../buttons", ""}) {
        CVideoPicButton button;
        button.setCheckable(true);
        const QPalette before = button.palette();
        button.LoadPictures("Bar", false, file);
        for (const QChar deed : QString("EPRSL-+"))
            Do(button, deed);
        QVERIFY(button.isChecked());
        QVERIFY(button.palette() == before);
    }
}

void tst_skin::findsDirectories()
{
    const Installation installation;
    const CSkinConfig* skin = CSkinConfig::Instance();
    QCOMPARE(skin->m_strResPath, installation.Root() + "/Resources");
    QCOMPARE(skin->m_strButtonPath, installation.Root() + "/Resources/buttons");
    installation.Write("Resources/icons/IconSetting.Conf", "[PTZ]\nup=arrow-up.png\n");
    QCOMPARE(skin->GetIconPath("up"), installation.Root() + "/Resources/icons/arrow-up.png");
    QCOMPARE(skin->GetIconPath("down"), QString());
    QCOMPARE(skin->GetIconPath(QString()), installation.Root() + "/Resources/icons");
    QCOMPARE(skin->m_strRootPath, QString());
    const QString root = QDir::cleanPath(installation.Root() + "/../Resources");
    QDir().mkpath(root);
    CSkinConfig::Release();
    QCOMPARE(CSkinConfig::Instance()->m_strRootPath, root);
    QDir().rmdir(root);
    const Installation nothing(0);
    QCOMPARE(CSkinConfig::Instance()->m_flushColor, QColor(249, 249, 249, 255));
    QCOMPARE(CSkinConfig::Instance()->GetIconPath("up"), QString());
}

void tst_skin::parsesColor()
{
    const QColor old(1, 2, 3, 77);
    const auto parsed = [&](const char* text) {
        QColor color = old;
        CSkinConfig::ParseColor(text, color);
        return color;
    };
    QCOMPARE(parsed("010:20:30"), QColor(10, 20, 30, 77));
    QCOMPARE(parsed("-5:256:2147483647"), QColor(0, 255, 255, 77));
    for (const char* text :
         {"", "10, 20, 30", ":20:30", "10:20", "10:20:30:40", "10:green:30", "10:20:99999999999"})
        QVERIFY2(parsed(text) == old, text);
}

void tst_skin::readsStyles()
{
    const Installation installation;
    CSkinConfig* skin = CSkinConfig::Instance();
    skin->m_strWidgetStyle = "old";
    installation.Write("Resources/OEMStyle.conf",
                       "[PaneDeck_MonitoBar]\nBarPlace=1\nOneScreenbtnHeight=wide\nstyle=flat\n"
                       "[PaneDeck_Widget]\nBarHeight=9\nflushColor=10:20:30\ntitleStyle=bold\n");
    skin->LoadBarStyle();
    QVERIFY(skin->m_nBarPlace == 1 && skin->m_nBarHeight == 0 && skin->m_nOneScreenBtnHeight == 0);
    QCOMPARE(skin->m_strBarStyle, QString("flat"));
    QCOMPARE(skin->m_flushColor, QColor(249, 249, 249));
    skin->LoadWidgetStyle();
    QCOMPARE(skin->m_flushColor, QColor(10, 20, 30));
    QCOMPARE(skin->m_strTitleStyle + skin->m_strWidgetStyle, QString("bold"));
}

void tst_skin::refusesObjectsBesideItsKeys()
{
    QFile found(QFINDTESTDATA("../data/skin/list-of-a-billion.conf"));
    QVERIFY(found.open(QIODevice::ReadOnly));
    const QByteArray object = R"(@DateTime(\0\0\0\tNor0))";
    const std::pair<QByteArray, int> rows[] = {{"style=" + object, 0},
                                               {found.readAll(), 5},
                                               {"style=" + QByteArray(300000, ' ') + object, 0},
                                               {"style=@home\nwidth=\"@Dark\", @, @V, bar@2x.png\n", 5},
                                               {"style=@ByteArray(flat)", 5}};
    for (const auto& [lines, height] : rows) {
        const Installation installation;
        installation.Write("Resources/OEMStyle.conf", "[PaneDeck_MonitoBar]\nBarHeight=5\n" + lines + "\n");
        CSkinConfig::Instance()->LoadBarStyle();
        QCOMPARE(CSkinConfig::Instance()->m_nBarHeight, height);
    }
}

QTEST_MAIN(tst_skin)

#include "tst_skin.moc"
