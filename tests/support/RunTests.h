#pragma once

#include <QApplication>
#include <QtTest>

/// The main function of every test program.
template <class TestCase> int RunTests(int argc, char** argv)
{
    QApplication application(argc, argv);
    TestCase testCase;
    return QTest::qExec(&testCase, argc, argv);
}
