#pragma once

#include <QString>
#include <QVector>

#include <functional>

/// One of the ways that a benchmark compares.
struct Contender
{
    QString name;
    std::function<void()> run;

    /// What is to be done before each run, and isn't timed.
    std::function<void()> prepare = [] {};
};

/// The medians of the contenders' times, in microseconds, over rounds in which each runs once, in turn. So a
/// change of the machine's speed hits them all, and the ratios hold.
QVector<double> MedianTimes(const QVector<Contender>& contenders, int rounds);

/// Prints a row for each contender: its time, and its ratio to the first one's.
void PrintTimes(const QString& title, const QVector<Contender>& contenders, const QVector<double>& times);

/// Large blocks of memory, such as a picture needs, that have been allocated since the program began.
int LargeAllocations();
