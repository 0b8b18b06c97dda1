#pragma once

#include <QtTest>

/// How long a test waits for what comes. Only what fails takes as long: a machine that compiles beside it may
/// leave a thread nothing for seconds.
constexpr int PatienceMs = 60'000;

#undef QTRY_VERIFY
#define QTRY_VERIFY(expression) QTRY_VERIFY_WITH_TIMEOUT((expression), PatienceMs)
#undef QTRY_COMPARE
#define QTRY_COMPARE(value, expected) QTRY_COMPARE_WITH_TIMEOUT((value), expected, PatienceMs)

/// The base of every test case: a Qt warning that no ExpectedWarning covers fails the test function it came
/// in. A test case with an init() or cleanup() of its own calls the one here from it.
class DeckTestCase : public QObject
{
    Q_OBJECT

protected Q_SLOTS:
    void init();
    void cleanup();
};

/// Declares the warnings that contain `part` as expected while it lives. Each other warning still fails.
class ExpectedWarning
{
public:
    explicit ExpectedWarning(const QString& part);
    ~ExpectedWarning();
    ExpectedWarning(const ExpectedWarning&) = delete;
    ExpectedWarning& operator=(const ExpectedWarning&) = delete;

    /// How many warnings it has covered.
    int Count() const;

private:
    QString m_strPart;
};
