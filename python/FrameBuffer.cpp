#include "FrameBuffer.h"

#include <QThread>

#include <cstring>
#include <limits>
#include <memory>

namespace {

constexpr int RgbBytes = 3;
constexpr int BgrxBytes = 4;
constexpr int Dimensions = 3;

/// Whatever an image's pixels count on; the GIL is taken when it goes. What outlives the interpreter is left.
template <typename Held> void letGo(void* held)
{
    if (!Py_IsInitialized())
        return;
    const PyGILState_STATE state = PyGILState_Ensure();
    delete static_cast<Held*>(held);
    PyGILState_Release(state);
}

struct HeldBuffer
{
    Py_buffer view = {};

    ~HeldBuffer() { PyBuffer_Release(&view); }

    int height() const { return int(view.shape[0]); }
    int width() const { return int(view.shape[1]); }
    int channels() const { return int(view.shape[2]); }

    /// From one index to the next; that of a single one may be anything in the buffer and never matters.
    Py_ssize_t stride(int dimension) const
    {
        if (view.shape[dimension] > 1)
            return view.strides[dimension];
        return dimension == 0 ? Py_ssize_t(width()) * channels() : dimension == 1 ? channels() : 1;
    }
};

struct HeldImage
{
    QImage image;
    PyObject* wrapper;

    ~HeldImage() { Py_DECREF(wrapper); }
};

QImage::Format formatOf(const HeldBuffer& buffer)
{
    return buffer.channels() == RgbBytes ? QImage::Format_RGB888 : QImage::Format_RGB32;
}

bool refuse(const char* reason)
{
    PyErr_SetString(PyExc_ValueError, reason);
    return false;
}

bool isFrame(const Py_buffer& view)
{
    constexpr Py_ssize_t Most = std::numeric_limits<short>::max();
    if (view.itemsize != 1 || (view.format && std::strcmp(view.format, "B") != 0))
        return refuse("a frame is made of unsigned bytes");
    if (view.ndim != Dimensions || (view.shape[2] != RgbBytes && view.shape[2] != BgrxBytes))
        return refuse("a frame's shape is (height, width, 3) or (height, width, 4)");
    if (view.shape[0] < 1 || view.shape[1] < 1 || view.shape[0] > Most || view.shape[1] > Most)
        return refuse("a frame has 1 to 32767 rows and columns");
    return true;
}

bool liesAsImage(const HeldBuffer& buffer)
{
    const Py_ssize_t row = buffer.stride(0);
    if (buffer.stride(2) != 1 || buffer.stride(1) != buffer.channels())
        return false;
    if (row < Py_ssize_t(buffer.width()) * buffer.channels() || row > std::numeric_limits<int>::max())
        return false;
    return buffer.channels() == RgbBytes ||
           (quintptr(buffer.view.buf) % BgrxBytes == 0 && row % BgrxBytes == 0);
}

QImage copyOf(const HeldBuffer& buffer)
{
    QImage copy(buffer.width(), buffer.height(), formatOf(buffer));
    for (int y = 0; y < copy.height(); ++y) {
        const char* from = static_cast<const char*>(buffer.view.buf) + y * buffer.stride(0);
        uchar* to = copy.scanLine(y);
        for (int x = 0; x < copy.width(); ++x, from += buffer.stride(1)) {
            for (int channel = 0; channel < buffer.channels(); ++channel)
                *to++ = uchar(from[channel * buffer.stride(2)]);
        }
    }
    return copy;
}

QImage copyWithoutGil(const HeldBuffer& buffer)
{
    QImage copy;
    Py_BEGIN_ALLOW_THREADS copy = copyOf(buffer);
    Py_END_ALLOW_THREADS return copy;
}

QImage viewOf(std::unique_ptr<HeldBuffer>& buffer)
{
    QImage view(static_cast<const uchar*>(buffer->view.buf), buffer->width(), buffer->height(),
                int(buffer->stride(0)), formatOf(*buffer), letGo<HeldBuffer>, buffer.get());
    // An image that could not be made calls no function either.
    if (!view.isNull())
        buffer.release();
    return view;
}

} // namespace

bool frameFromBuffer(PyObject* object, QImage& frame)
{
    auto buffer = std::make_unique<HeldBuffer>();
    if (PyObject_GetBuffer(object, &buffer->view, PyBUF_STRIDED_RO | PyBUF_FORMAT) != 0 ||
        !isFrame(buffer->view))
        return false;
    frame = liesAsImage(*buffer) ? viewOf(buffer) : copyWithoutGil(*buffer);
    return !frame.isNull() || refuse("the frame is too large");
}

QImage frameFromImage(const QImage& image, PyObject* wrapper)
{
    if (image.format() != QImage::Format_RGB888 && image.format() != QImage::Format_RGB32)
        return image.convertToFormat(QImage::Format_RGB32);
    Py_INCREF(wrapper);
    auto* held = new HeldImage{image, wrapper};
    return QImage(held->image.constBits(), image.width(), image.height(), image.bytesPerLine(),
                  image.format(), letGo<HeldImage>, held);
}

bool isThreadOf(const QObject* object)
{
    if (object->thread() == QThread::currentThread())
        return true;
    PyErr_SetString(PyExc_RuntimeError, "only in the deck's thread: others use post_frame()");
    return false;
}
