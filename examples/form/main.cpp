#include "ui_window.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    CPaneDeck::SetInstallation(PANEDECK_TREE,
                               QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    CPaneDeck::SetLanguageFile(PANEDECK_TREE "/languages/English.ini");
    QWidget window;
    Ui::Window form;
    form.setupUi(&window);
    for (int i = 1; i <= form.formDeck->paneCount(); ++i)
        form.cameras->addItem(QString("Camera %1").arg(i));

    CPaneDeck* deck = form.formDeck->deck();
    QObject::connect(deck, &CPaneDeck::sig_activeWnd, form.cameras,
                     [&](int pane) { form.cameras->setCurrentRow(pane); });
    QObject::connect(form.cameras, &QListWidget::itemActivated, deck, [&](QListWidgetItem* item) {
        QImage frame(320, 240, QImage::Format_RGB32);
        frame.fill(QColor::fromHsv(form.cameras->row(item) * 22, 150, 150));
        deck->SetFrame(deck->GetCurrentWnd(), frame);
    });
    form.cameras->setCurrentRow(deck->GetCurrentWnd());
    window.show();

    const QStringList arguments = application.arguments();
    if (arguments.value(1) == "--once") {
        for (int pane : {0, 3}) {
            deck->SetActiveWnd(pane);
            emit form.cameras->itemActivated(form.cameras->currentItem());
        }
        QTimer::singleShot(200, &window, [&] {
            window.grab().save(arguments.value(2, "form.png"));
            application.quit();
        });
    }
    return application.exec();
}
