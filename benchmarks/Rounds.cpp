#include "Rounds.h"

#include <QElapsedTimer>
#include <QTextStream>

#include <algorithm>
#include <atomic>
#include <cstdlib>

namespace {

std::atomic<int> s_largeAllocations{0};

double Median(QVector<double> times)
{
    const auto middle = times.begin() + times.size() / 2;
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

double Time(const std::function<void()>& run)
{
    QElapsedTimer timer;
    timer.start();
    run();
    return timer.nsecsElapsed() / 1000.0;
}

} // namespace

extern "C" void* __libc_malloc(size_t size);

/// Takes the place of the C library's, to count.
extern "C" void* malloc(size_t size)
{
    constexpr size_t LARGE = 16 << 10;
    if (size >= LARGE)
        ++s_largeAllocations;
    return __libc_malloc(size);
}

int LargeAllocations()
{
    return s_largeAllocations;
}

QVector<double> MedianTimes(const QVector<Contender>& contenders, int rounds)
{
    QVector<QVector<double>> times(contenders.size());
    for (const Contender& contender : contenders)
        contender.run();
    for (int round = 0; round < rounds; ++round) {
        for (int i = 0; i < contenders.size(); ++i)
            times[i].append(Time(contenders[i].run));
    }
    QVector<double> medians;
    for (const QVector<double>& one : times)
        medians.append(Median(one));
    return medians;
}

void PrintTimes(const QString& title, const QVector<Contender>& contenders, const QVector<double>& times)
{
    QTextStream out(stdout);
    out << title << '\n';
    for (int i = 0; i < contenders.size(); ++i) {
        out << QString("  %1 %2 us %3 x\n")
                   .arg(contenders[i].name, -44)
                   .arg(times[i], 10, 'f', 1)
                   .arg(times[i] / times[0], 8, 'f', 2);
    }
}
