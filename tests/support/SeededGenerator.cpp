#include "support/SeededGenerator.h"

#include <QtDebug>

QRandomGenerator SeededGenerator()
{
    bool given = false;
    quint32 seed = qEnvironmentVariableIntValue("PANEDECK_SEED", &given);
    if (!given)
        seed = QRandomGenerator::global()->bounded(1000000);
    qInfo("PANEDECK_SEED=%u", seed);
    return QRandomGenerator(seed);
}
