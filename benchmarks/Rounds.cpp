#include "Rounds.h"

#include <QTextStream>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <ctime>

namespace {

std::atomic<int> s_largeAllocations{0};

double Median(QVector<double> times)
{
    const auto middle = times.begin() + times.size() / 2;
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

/// The processor's time that the process has used, in microseconds: what else runs on the machine doesn't
/// count.
double ProcessorTime()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * 1e6 + time.tv_nsec / 1e3;
}

double Time(const Contender& contender)
{
    contender.prepare();
    const double start = ProcessorTime();
    contender.run();
    return ProcessorTime() - start;
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
        Time(contender);
    for (int round = 0; round < rounds; ++round) {
        for (int i = 0; i < contenders.size(); ++i)
            times[i].append(Time(contenders[i]));
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
