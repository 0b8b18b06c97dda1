"""The module as an application uses it: real events, pixels on the screen, buffers that come back."""
import ctypes
import gc
import pathlib
import re
import subprocess
import sys
import tempfile
import threading
import unittest
import weakref

import numpy
from PyQt5 import sip
from PyQt5.QtCore import QRect, QTime, Qt
from PyQt5.QtGui import QColor, QImage
from PyQt5.QtTest import QTest
from PyQt5.QtWidgets import QApplication, QPushButton, QTreeWidgetItem, QWidget

import panedeck
from panedeck import CPaneDeck

application = QApplication(sys.argv[:1])
project = pathlib.Path(__file__).resolve().parents[2]
room = tempfile.TemporaryDirectory()
unittest.addModuleCleanup(room.cleanup)
CPaneDeck.SetInstallation(room.name, room.name)

RED, GREEN, BLUE = (255, 0, 0), (0, 255, 0), (0, 0, 255)


def plain(color, channels=3, height=40, width=60):
    """A frame of one colour; the fourth byte is left zero."""
    frame = numpy.zeros((height, width, channels), numpy.uint8)
    frame[:, :, :3] = color if channels == 3 else color[::-1]
    return frame


def colour_of(deck, pane, x=0.5, y=0.5):
    label = deck.PaneWidget(pane)
    picture = label.grab().toImage()
    return QColor(picture.pixel(int(x * label.width()), int(y * label.height()))).getRgb()[:3]


class Array(numpy.ndarray):
    """An array that a weak reference can watch."""


class DeckTest(unittest.TestCase):
    def setUp(self):
        self.deck = self.make_deck()

    def make_deck(self, kind=panedeck.WND_TYPE_MONITOR):
        deck = CPaneDeck(None, kind, 9)
        deck.resize(600, 500)
        deck.SetShowWndNo(4)
        deck.show()
        self.addCleanup(lambda: sip.isdeleted(deck) or sip.delete(deck))
        return deck

    def test_signals_bring_their_arguments(self):
        log = []
        self.deck.sig_activeWnd.connect(lambda *args: log.append(("active", *args)))
        self.deck.sig_SendPtzCommand.connect(lambda *args: log.append(("ptz", *args)))
        self.deck.sig_OnWndBtnClick.connect(lambda *args: log.append(("button", *args)))
        self.deck.SetFunctionParam(1, 1)
        self.deck.EnableRefresh(1, False)
        label = self.deck.PaneWidget(1)
        QTest.mouseClick(label, Qt.LeftButton, Qt.NoModifier, label.rect().center())
        self.deck.showTitle(1)
        self.deck.slot_wndBtnClick(panedeck.BTN_SNAPSHOT)
        self.assertEqual(log, [("ptz", 1, 0, 0), ("active", 1), ("ptz", 1, 0, 1), ("button", 1, panedeck.BTN_SNAPSHOT)])

    def test_frames_stand_on_the_screen(self):
        two = numpy.concatenate([plain(RED), plain(BLUE)], axis=1)
        for name, frame, left, right in [
            ("rgb", two, RED, BLUE),
            ("bgrx", numpy.concatenate([plain(RED, 4), plain(BLUE, 4)], axis=1), RED, BLUE),
            ("memoryview", memoryview(two.tobytes()).cast("B", two.shape), RED, BLUE),
            ("part of wider rows", two[:, 30:90], RED, BLUE),
            ("columns backwards", two[:, ::-1], BLUE, RED),
            ("rows backwards", two[::-1], RED, BLUE),
            ("every other pixel", two[::2, ::2], RED, BLUE),
            ("channels first", numpy.moveaxis(numpy.moveaxis(two, 2, 0).copy(), 0, 2), RED, BLUE),
            ("words off their place", numpy.frombuffer(bytes(1) + bytes(plain(GREEN, 4)), numpy.uint8, offset=1)
             .reshape(40, 60, 4), GREEN, GREEN),
            ("one row", two[:1], RED, BLUE),
            ("one pixel", plain(GREEN, 3, 1, 1), GREEN, GREEN),
        ]:
            with self.subTest(name):
                self.deck.set_frame(0, frame)
                self.assertEqual((colour_of(self.deck, 0, 0.1), colour_of(self.deck, 0, 0.9)), (left, right))
        self.deck.set_frame(0, two, source=QRect(60, 0, 60, 40))
        self.assertEqual(colour_of(self.deck, 0, 0.1), BLUE)

    def test_buffers_are_held_without_a_copy_and_come_back(self):
        for name, channels in [("rgb", 3), ("bgrx", 4)]:
            for drop in [lambda: self.deck.set_frame(0, None), lambda: self.deck.set_frame(0, plain(BLUE)),
                         lambda: sip.delete(self.deck)]:
                with self.subTest(name):
                    self.deck = self.make_deck()
                    frame = plain(RED, channels).view(Array)
                    watch = weakref.ref(frame)
                    self.deck.set_frame(0, frame)
                    frame[:] = plain(GREEN, channels)
                    self.assertEqual(colour_of(self.deck, 0), GREEN)
                    del frame
                    gc.collect()
                    self.assertIsNotNone(watch())
                    drop()
                    gc.collect()
                    self.assertIsNone(watch())

    def test_what_is_not_shown_is_not_held(self):
        store = bytearray(plain(RED).tobytes())
        self.deck.set_frame(77, memoryview(store).cast("B", (40, 60, 3)))
        self.deck.post_frame(-1, memoryview(store).cast("B", (40, 60, 3)))
        with self.assertRaises(ValueError):
            self.deck.set_frame(0, memoryview(store).cast("B", (60, 40 * 3)))
        store.append(0)  # a BufferError while anybody holds it

    def test_images_over_python_memory_stay_valid(self):
        store = bytearray(plain(RED, 4, 600, 600).tobytes())
        self.deck.SetFrame(0, QImage(bytes(store), 600, 600, QImage.Format_RGB32))
        self.deck.PostFrame(1, QImage(bytes(store), 600, 600, QImage.Format_RGB32))
        gc.collect()
        filler = [bytes([7]) * len(store) for _ in range(8)]
        application.processEvents()
        self.assertEqual([colour_of(self.deck, 0), colour_of(self.deck, 1), len(filler)], [RED, RED, 8])

    def test_threads_post(self):
        def post(pane):
            for _ in range(200):
                self.deck.post_frame(pane, plain(RED))
                self.deck.post_frame(pane, plain(GREEN)[:, ::-1])
            self.deck.post_frame(pane, plain(BLUE, 4))

        threads = [threading.Thread(target=post, args=(pane,)) for pane in range(4)]
        for thread in threads:
            thread.start()
        while any(thread.is_alive() for thread in threads):
            application.processEvents()
        application.processEvents()
        self.assertEqual([colour_of(self.deck, pane) for pane in range(4)], [BLUE] * 4)

    def test_set_frame_belongs_to_the_deck_thread(self):
        raised = []

        def show():
            for call, frame in [(self.deck.set_frame, plain(RED)), (self.deck.SetFrame, QImage())]:
                try:
                    call(0, frame)
                except RuntimeError as error:
                    raised.append(error)

        thread = threading.Thread(target=show)
        thread.start()
        thread.join()
        self.assertEqual(len(raised), 2)

    def test_wrong_arguments_raise(self):
        for error, frame in [
            (TypeError, 7), (TypeError, "frame"), (ValueError, b"flat"), (ValueError, plain(RED)[0]),
            (ValueError, numpy.zeros((4, 4, 2), numpy.uint8)), (ValueError, numpy.zeros((4, 0, 3), numpy.uint8)),
            (ValueError, numpy.zeros((4, 4, 3), numpy.int8)), (ValueError, numpy.zeros((4, 4, 3), numpy.uint16)),
            (ValueError, numpy.zeros((1, 40000, 3), numpy.uint8)), (ValueError, numpy.zeros((), numpy.uint8)),
        ]:
            for call in [self.deck.set_frame, self.deck.post_frame]:
                with self.subTest(call=call.__name__, frame=repr(frame)[:30]), self.assertRaises(error):
                    call(0, frame)
        for call in [lambda: self.deck.SetTitle("0", 1), lambda: CPaneDeck(None, "monitor"), lambda: self.deck.addWidget(3)]:
            with self.assertRaises(TypeError):
                call()

    def test_out_parameters_come_back(self):
        self.assertEqual(self.deck.GetShowMode(), panedeck.WND_SHOW_SPLIT)
        self.assertEqual(self.deck.GetLayout()[0], 0)
        width, height = self.deck.GetWindowRect(0)
        self.assertTrue(200 < width < 300 and 150 < height < 300, (width, height))
        self.assertEqual(self.deck.GetWindowRect(99), (0, 0))
        self.assertEqual(self.deck.GetSelectedTime(), (0,) * 6)
        playback = self.make_deck(panedeck.WND_TYPE_PLAYBACK)
        playback.ChangePlaybackViewType(panedeck.PLAYBACK_VIEW_TIMER)
        playback.SetTimerSliderPose(13, 30, 0)
        playback.grab()
        hour, minute, second, *end = playback.GetSelectedTime()
        self.assertEqual((hour, end), (13, [23, 59, 59]))
        self.assertEqual(playback.SelectedTime(), QTime(hour, minute, second))

    def test_day_of_colours(self):
        playback = self.make_deck(panedeck.WND_TYPE_PLAYBACK)
        playback.ChangePlaybackViewType(panedeck.PLAYBACK_VIEW_TIMER)
        playback.SetTimerPeriod(numpy.full(86400, 0x12AB34, numpy.uint32))
        picture = playback.grab().toImage()
        colours = {picture.pixel(300, y) & 0xFFFFFF for y in range(picture.height())}
        self.assertIn(0x12AB34, colours)
        for wrong in [numpy.zeros(86399, numpy.uint32), numpy.zeros(86400, numpy.uint8)]:
            with self.assertRaises(ValueError):
                playback.SetTimerPeriod(wrong)

    def test_deck_deleted_under_python(self):
        parent = QWidget()
        deck = CPaneDeck(parent)
        button = QPushButton("own")
        deck.addWidget(button)
        sip.delete(parent)
        for call in [deck.clearText, button.text, lambda: deck.set_frame(0, plain(RED))]:
            with self.assertRaises(RuntimeError):
                call()

    def test_receiver_deletes_the_deck(self):
        self.deck.sig_wndNumberChanged.connect(lambda count: sip.delete(self.deck))
        self.deck.SetShowWndNo(9)
        self.assertTrue(sip.isdeleted(self.deck))

    def test_widget_that_no_toolbar_takes_stays_pythons(self):
        playback = self.make_deck(panedeck.WND_TYPE_PLAYBACK)
        button = QPushButton()
        playback.addWidget(button)
        self.assertTrue(sip.ispyowned(button))

    def test_subclass_overrides_events(self):
        class Deck(CPaneDeck):
            keys = []

            def keyPressEvent(self, event):
                self.keys.append(event.key())

        deck = Deck()
        QTest.keyClick(deck, Qt.Key_F5)
        self.assertEqual(Deck.keys, [Qt.Key_F5])

    def test_nothing_of_the_header_is_missing(self):
        header = (project / "src/deck/CPaneDeck.h").read_text()
        public = header[header.index("public:"):header.index("protected:")]
        names = set(re.findall(r"^    [^/(]*?(\w+)\(", public, re.MULTILINE))
        self.assertGreater(len(names), 80)
        self.assertEqual({name for name in names if not hasattr(CPaneDeck, name)}, {"CPaneDeck"})
        types = (project / "src/deck/PaneDeckTypes.h").read_text()
        for name, value in re.findall(r"^ +(\w+) = (\d+)", types, re.MULTILINE):
            self.assertEqual(getattr(panedeck, name), int(value))

    def test_the_example_plays_nine_panes(self):
        path = str(pathlib.Path(room.name) / "wall.png")
        subprocess.run([sys.executable, project / "python/examples/wall.py", path], check=True, timeout=60,
                       stdout=subprocess.DEVNULL)
        picture = QImage(path).copy(0, 0, 960, 500).scaled(12, 12)
        for cell in range(9):
            x, y = cell % 3 * 4, cell // 3 * 4
            self.assertGreater(len({picture.pixel(x + i, y + j) for i in range(4) for j in range(4)}), 8)

    def test_device_tree(self):
        tree = panedeck.CDeviceTreeWidget()
        self.addCleanup(lambda: sip.delete(tree))
        record = ctypes.c_int(0)
        item = QTreeWidgetItem(tree, ["Gate"])
        item.setData(0, 33, ctypes.addressof(record))
        clicked = []
        tree.rightClicked.connect(lambda index: clicked.append(index.data()))
        tree.show()
        QTest.mouseClick(tree.viewport(), Qt.RightButton, Qt.NoModifier, tree.visualItemRect(item).center())
        self.assertEqual(clicked, ["Gate"])
        mime = panedeck.MyMimeData()
        mime.SetItem(item)
        self.assertTrue(mime.GetItem() is item and mime.hasFormat("mydata"))


if __name__ == "__main__":
    unittest.main()
