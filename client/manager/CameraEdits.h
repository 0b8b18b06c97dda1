#pragma once

#include "cameras/CameraDescription.h"

#include <QObject>
#include <QStringList>

class CameraList;
class QWidget;

/// Changes of the list of cameras, each asked for in a dialog over a window where there is something to ask.
/// Cameras are named by their ids; those that are gone are passed over.
class CameraEdits : public QObject
{
    Q_OBJECT

public:
    explicit CameraEdits(CameraList* cameras, QObject* parent) : QObject(parent), m_cameras(cameras) {}

    void add(QWidget* window, const QString& group);
    void addSeveral(QWidget* window);
    void addSynthetic();
    void edit(QWidget* window, const QString& id);
    void remove(QWidget* window, const QStringList& ids);
    /// Off, if the first of them is on; else on.
    void switchOver(const QStringList& ids);
    /// Asks for the group of them all.
    void regroup(QWidget* window, const QStringList& ids);
    void setGroup(const QStringList& ids, const QString& group);
    /// Exchanges one level of their groups' names, from 0, for another name.
    void renameGroup(const QStringList& ids, int level, const QString& name);
    /// One place up, -1, or down, 1, in the list's order; those at its end stay.
    void move(const QStringList& ids, int step);
    void sortByName();
    void exportAll(QWidget* window);

Q_SIGNALS:
    /// What could not be done; one line.
    void failed(const QString& error);

private:
    void writeTable(const QString& path, bool withPasswords);
    void change(const QVector<CameraDescription>& cameras);

    CameraList* m_cameras;
};
