#pragma once

#include "playback/ExportPlan.h"

#include <QDialog>

class QComboBox;
class QDateTimeEdit;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

/// Asks what is to be taken out of the recordings, tells how much that is and how much room there is, and
/// does it while everything else goes on.
class ExportDialog : public QDialog
{
    Q_OBJECT

public:
    /// What it begins with.
    struct Choice
    {
        QStringList cameras; ///< all that have recordings
        QStringList chosen;  ///< of these
        qint64 fromMs = 0;
        qint64 toMs = 0;
    };

    ExportDialog(const ClientArchive* archive, const Choice& choice, QWidget* parent);

    /// The same as if the two fields were set; milliseconds since 1970.
    void setStretch(qint64 fromMs, qint64 toMs);

Q_SIGNALS:
    /// What the two fields say.
    void stretchChanged(qint64 fromMs, qint64 toMs);
    /// A line for the log.
    void told(const QString& text);

protected:
    void timerEvent(QTimerEvent* event) override;

private Q_SLOTS:
    void planLater();
    void chooseDirectory();
    void begin();
    void end(const ExportResult& result);
    void reject() override;

private:
    void layOut(const Choice& choice);
    QWidget* makeDirectoryRow();
    QDateTimeEdit* makeTime(const QString& name, qint64 ms);
    void plan();
    QStringList chosen() const;
    QString sizes() const;
    void setRunning(bool isRunning);

    const ClientArchive* m_archive;
    ExportPlan m_plan;
    QDateTimeEdit* m_from = nullptr;
    QDateTimeEdit* m_to = nullptr;
    QListWidget* m_cameras = nullptr;
    QComboBox* m_container = nullptr;
    QLineEdit* m_directory = nullptr;
    QWidget* m_fields = nullptr;
    QLabel* m_note = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_export = nullptr;
    QPushButton* m_open = nullptr;
    QPushButton* m_close = nullptr;
    bool m_isRunning = false;
    int m_planTimer = 0;
    RecordingExporter m_exporter;
};
