#pragma once

#include <Python.h>

#include <QImage>

/// An image over the pixels of any object with the buffer protocol, of the shape (height, width, 3), R, G, B,
/// or (height, width, 4), B, G, R and a byte without meaning. The buffer is held, not copied, for as long as
/// a copy of the image lives, unless its pixels don't lie as QImage wants them: next to each other, rows
/// downwards, words aligned. Needs the GIL. False, with a Python exception, for all else.
bool frameFromBuffer(PyObject* buffer, QImage& frame);

/// The image with the Python object around it held as well: an image over memory of Python's counts on its
/// wrapper to keep that. Needs the GIL; may be dropped in any thread.
QImage frameFromImage(const QImage& image, PyObject* wrapper);

/// Whether the call comes from the thread; else a RuntimeError is set.
bool isThreadOf(const QObject* object);
