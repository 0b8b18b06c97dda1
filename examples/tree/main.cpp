#include <CDeviceTreeWidget.h>
#include <CPaneDeck.h>

#include <QApplication>
#include <QSplitter>
#include <QStandardPaths>
#include <QTimer>

#include <deque>

namespace {

constexpr int RecordRole = 33;

/// What a row of the tree stands for. Panes and tree read the first member.
struct Record
{
    int type; // 0 a group, 1 a device, 2 one of its channels
    QColor color;
};

/// The rows and the records behind them, which stay where they are as long as the rows do.
class Devices
{
public:
    void fill(QTreeWidget& tree)
    {
        for (const char* group : {"Ground floor", "First floor"}) {
            QTreeWidgetItem* device = add(add(tree.invisibleRootItem(), 0, group), 1, "Recorder");
            for (int i = 1; i <= 4; ++i)
                add(device, 2, QString("Channel %1").arg(i));
        }
        tree.expandAll();
    }

    static const Record& recordOf(const QTreeWidgetItem* item)
    {
        return *reinterpret_cast<const Record*>(quintptr(item->data(0, RecordRole).toLongLong()));
    }

private:
    QTreeWidgetItem* add(QTreeWidgetItem* parent, int type, const QString& text)
    {
        m_records.push_back({type, QColor::fromHsv(int(m_records.size()) * 29 % 360, 150, 180)});
        auto* item = new QTreeWidgetItem(parent, {text});
        item->setData(0, RecordRole, qlonglong(quintptr(&m_records.back())));
        QPixmap icon(16, 16);
        icon.fill(m_records.back().color);
        item->setIcon(0, icon); // without an icon a row isn't dragged
        return item;
    }

    std::deque<Record> m_records;
};

void open(CPaneDeck& deck, const QTreeWidgetItem* channel, int pane)
{
    QImage frame(320, 240, QImage::Format_RGB32);
    frame.fill(Devices::recordOf(channel).color);
    deck.SetFrame(pane, frame);
    deck.SetTitle(pane, channel->text(0));
    deck.EnableRefresh(pane, false);
    deck.SetActiveWnd(pane);
}

void close(CPaneDeck& deck, int pane)
{
    deck.SetFrame(pane, QImage());
    deck.ResetWnd(pane);
}

/// The tree only tells what was dropped where; moving is up to the application.
void regroup(QTreeWidgetItem* row, QTreeWidgetItem* group)
{
    if (row->parent() != group && Devices::recordOf(row).type == 1)
        group->addChild(row->parent()->takeChild(row->parent()->indexOfChild(row)));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CPaneDeck::SetInstallation(PANEDECK_TREE,
                               QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    CPaneDeck::SetLanguageFile(PANEDECK_TREE "/languages/English.ini");
    Devices devices; // outlives the tree
    QSplitter window;
    auto* tree = new CDeviceTreeWidget(&window);
    auto* deck = new CPaneDeck(&window, WND_TYPE_MONITOR, 16);
    devices.fill(*tree);
    tree->setHeaderLabel("Devices");
    deck->SetShowWndNo(4);
    QObject::connect(deck, &CPaneDeck::sig_DragEvent,
                     [deck](QTreeWidgetItem* item, int pane) { open(*deck, item, pane); });
    QObject::connect(deck, &CPaneDeck::sig_OnWndBtnClick, [deck](int pane, Btn_type_EX button) {
        if (button == BTN_CLOSE_VIDEO)
            close(*deck, pane);
    });
    QObject::connect(tree, &CDeviceTreeWidget::sig_drop,
                     [tree](QTreeWidgetItem* row, QTreeWidgetItem* group) {
                         // Later, as the drag still looks at its row while it reports the drop.
                         QTimer::singleShot(0, tree, [row, group] { regroup(row, group); });
                     });
    window.resize(1000, 600);
    window.setSizes({220, 780});
    window.show();

    const QStringList arguments = application.arguments();
    if (arguments.value(1) == "--once") {
        const QTreeWidgetItem* recorder = tree->topLevelItem(0)->child(0);
        open(*deck, recorder->child(0), 0);
        open(*deck, recorder->child(2), 3);
        QTimer::singleShot(200, &window, [&] {
            window.grab().save(arguments.value(2, "tree.png"));
            application.quit();
        });
    }
    return application.exec();
}
