#pragma once

#include "cameras/CameraTable.h"

#include <QDialog>

class CameraList;
class QLabel;
class QPlainTextEdit;
class QPushButton;

/// Adds several cameras at once, from lines that are typed, pasted or read from a file. What can't be taken
/// is said while the lines stand there.
class SeveralDialog : public QDialog
{
    Q_OBJECT

public:
    SeveralDialog(CameraList* cameras, QWidget* parent);

    void accept() override;

private:
    void check();
    void askForFile();
    void readFile(const QString& path);

    CameraList* m_cameras;
    QPlainTextEdit* m_lines;
    QLabel* m_finding;
    QPushButton* m_add;
    CameraTable::Content m_content;
};
