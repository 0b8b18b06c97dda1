#pragma once

#include <QApplication>
#include <QtTest>

/// The main function of every test program. What needs no window is tested without one, under a
/// QCoreApplication.
template <class TestCase, class Application = QApplication> int RunTests(int argc, char** argv)
{
    Application application(argc, argv);
    TestCase testCase;
    return QTest::qExec(&testCase, argc, argv);
}
