#pragma once

#include "decode/PartConverter.h"

#include <QObject>
#include <QThreadPool>

#include <mutex>
#include <optional>

/// Makes frames from parts of others beside the GUI. Of those that wait the newest is made, so that they
/// never queue up.
class PartMaker : public QObject
{
    Q_OBJECT

public:
    PartMaker();
    /// Waits for the part that is being made.
    ~PartMaker() override;

    void make(FramePtr frame, const QRect& part, QSize size);

Q_SIGNALS:
    void made(const FramePtr& part);

private:
    struct Order
    {
        FramePtr frame;
        QRect part;
        QSize size;
    };

    void work();
    std::optional<Order> takeOrder();
    void deliver();

    std::mutex m_mutex; ///< held for these three
    std::optional<Order> m_next;
    FramePtr m_made;
    bool m_isWorking = false;

    PartConverter m_converter; ///< belongs to whoever works
    QThreadPool m_pool;
};
