#include "FleetTestCase.h"

#include "fleet/FleetSchema.h"

#include <QUuid>
#include <QtTest>

void FleetTestCase::initTestCase()
{
    m_cluster = std::make_unique<PgCluster>();
    QVERIFY2(m_cluster->trouble().isEmpty(), qPrintable(m_cluster->trouble()));
}

void FleetTestCase::init()
{
    DeckTestCase::init();
    m_database = std::make_unique<FleetDatabase>(m_cluster->address());
    QVERIFY2(m_database->open(), qPrintable(m_database->reason()));
    QVERIFY(m_database->run("SET client_min_messages = warning"));
    QVERIFY(m_database->run("DROP SCHEMA public CASCADE"));
    QVERIFY(m_database->run("CREATE SCHEMA public"));
    QVERIFY(m_database->run("GRANT USAGE ON SCHEMA public TO PUBLIC"));
    QCOMPARE(FleetSchema::check(*m_database), FleetSchema::State::Older);
    const FleetSchema::State state = FleetSchema::migrate(*m_database);
    QVERIFY2(state == FleetSchema::State::Current, qPrintable(m_database->reason()));
}

QString FleetTestCase::newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

void FleetTestCase::addCameras(int count)
{
    for (int i = 0; i < count; ++i)
        QVERIFY(m_database->run("INSERT INTO camera (id, name) VALUES (?, ?)",
                                {QString("c%1").arg(i, 2, 10, QChar('0')), QString("Camera %1").arg(i)}));
}
