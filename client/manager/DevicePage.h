#pragma once

#include "cameras/CameraDescription.h"

#include <QWidget>

class NotedField;
class OnvifDevice;
class QLabel;
class QLineEdit;
class QPushButton;
struct OnvifFault;

/// The fields of a camera's ONVIF device: where it is, and which certificate of its own is trusted.
class DevicePage : public QWidget
{
    Q_OBJECT

public:
    explicit DevicePage(const CameraDescription& about, QWidget* parent = nullptr);

    void fill(CameraDescription* about) const;
    bool isValid() const;

Q_SIGNALS:
    void changed();

private:
    QWidget* makeButtons();
    void check();
    void look();
    void take(const OnvifFault& fault);
    void setCertificate(const QString& fingerprint);

    QString m_certificate;
    QLineEdit* m_address;
    QLabel* m_trusted;
    QLabel* m_finding;
    QPushButton* m_look;
    QPushButton* m_forget;
    NotedField* m_note = nullptr;
    OnvifDevice* m_device = nullptr; ///< while it is asked
};
