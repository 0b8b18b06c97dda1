#pragma once

#include "cameras/CameraDescription.h"

#include <QDialog>

class AddressPage;
class CameraList;
class CameraTest;
class CPaneDeck;
class DevicePage;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class RecordingPage;

/// Adds a camera or changes one, with its picture beside the fields.
class CameraDialog : public QDialog
{
    Q_OBJECT

public:
    /// A description whose id is not in the list is added.
    CameraDialog(CameraList* cameras, const CameraDescription& about, QWidget* parent);

    void accept() override;

private:
    QWidget* makePicture();
    CameraDescription description() const;
    /// Where the test finds it, even if it is switched off; none while the fields name no address.
    std::optional<SourceAddress> testAddress() const;
    void test();
    void stopTest();
    void showTest(const QString& text);
    void check();

    CameraList* m_cameras;
    const CameraDescription m_before;
    CPaneDeck* m_deck;
    CameraTest* m_test;
    AddressPage* m_address;
    RecordingPage* m_recording;
    DevicePage* m_device = nullptr; ///< of a camera with ONVIF
    QPushButton* m_testButton;
    QLabel* m_finding;
    QLabel* m_fault;
    QDialogButtonBox* m_buttons;
};
