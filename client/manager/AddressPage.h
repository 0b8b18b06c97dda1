#pragma once

#include "cameras/CameraDescription.h"

#include <QWidget>

class CameraList;
class NotedField;
class PlainConsent;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;

/// The fields of a camera that tell what it is and where. What is wrong stands below the field, once somebody
/// has been there.
class AddressPage : public QWidget
{
    Q_OBJECT

public:
    /// `about` is what it begins with; its id tells the camera apart from the others of the list.
    AddressPage(const CameraList& cameras, const CameraDescription& about, QWidget* parent = nullptr);

    /// Writes the fields into a description.
    void fill(CameraDescription* about) const;
    /// The password as typed; none if it was not touched.
    std::optional<QString> password() const;
    bool isValid() const;

Q_SIGNALS:
    void changed();

private:
    QFormLayout* addNames(const CameraDescription& about);
    void addLogin(QFormLayout* form, const CameraDescription& about);
    void addChoices(QFormLayout* form, const CameraDescription& about);
    QString nameFault() const;
    QString smallFault() const;
    void check();
    void splitLogin(QLineEdit* field);

    const CameraList& m_cameras;
    const QString m_id;
    QLineEdit* m_name;
    QComboBox* m_group;
    QLineEdit* m_main;
    QLineEdit* m_small;
    QLineEdit* m_user;
    QLineEdit* m_password;
    PlainConsent* m_plain;
    QComboBox* m_transport;
    QComboBox* m_ptz;
    QCheckBox* m_enabled;
    NotedField* m_nameNote = nullptr;
    NotedField* m_mainNote = nullptr;
    NotedField* m_smallNote = nullptr;
    bool m_isPasswordTyped = false;
};
