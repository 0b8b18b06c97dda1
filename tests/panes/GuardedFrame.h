#pragma once

#include <QImage>
#include <QRandomGenerator>

#include <sys/mman.h>
#include <unistd.h>

/// Pixels of an RGB888 or RGB32 frame, each row on a 32-bit boundary, filled at random. Memory that may not
/// be read begins right after the last pixel's last byte.
class GuardedFrame
{
public:
    GuardedFrame(const QSize& size, QRandomGenerator& random, QImage::Format format = QImage::Format_RGB888)
        : m_size(size), m_format(format), m_pixelBytes(format == QImage::Format_RGB32 ? 4 : 3)
    {
        const size_t page = size_t(sysconf(_SC_PAGESIZE));
        const size_t bytes = size_t(Stride()) * (size.height() - 1) + size_t(size.width() * m_pixelBytes);
        m_length = (bytes + page - 1) / page * page + page;
        void* memory = mmap(nullptr, m_length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED)
            qFatal("no memory for a frame");
        m_memory = static_cast<uchar*>(memory);
        mprotect(m_memory + m_length - page, page, PROT_NONE);
        m_pixels = m_memory + m_length - page - bytes;
        for (size_t i = 0; i < bytes; ++i)
            m_pixels[i] = uchar(random.generate());
    }

    ~GuardedFrame() { munmap(m_memory, m_length); }
    GuardedFrame(const GuardedFrame&) = delete;
    GuardedFrame& operator=(const GuardedFrame&) = delete;

    const QSize& Size() const { return m_size; }
    uchar* Pixels() const { return m_pixels; }
    ulong Address() const { return reinterpret_cast<ulong>(m_pixels); }

    /// A view on the pixels.
    QImage View() const { return QImage(m_pixels, m_size.width(), m_size.height(), m_format); }

    /// A picture of the same pixels, all opaque, in memory of its own, for Qt to read from as it likes.
    QImage Copy() const
    {
        QImage copy(m_size, m_format);
        for (int y = 0; y < m_size.height(); ++y) {
            std::copy_n(m_pixels + size_t(Stride()) * y, m_size.width() * m_pixelBytes, copy.scanLine(y));
            for (int i = 3; m_pixelBytes == 4 && i < m_size.width() * 4; i += 4)
                copy.scanLine(y)[i] = 0xff;
        }
        return copy;
    }

private:
    int Stride() const { return (m_size.width() * m_pixelBytes + 3) / 4 * 4; }

    QSize m_size;
    QImage::Format m_format;
    int m_pixelBytes;
    size_t m_length = 0;
    uchar* m_memory = nullptr;
    uchar* m_pixels = nullptr;
};
