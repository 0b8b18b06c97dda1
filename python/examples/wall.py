"""Nine playing panes, fed by a thread from NumPy. With a file's name as argument: a picture of it instead."""
import os
import sys
import threading

import numpy
from PyQt5.QtCore import QTimer
from PyQt5.QtWidgets import QApplication

import panedeck


def play(deck, stop):
    y, x = numpy.mgrid[0:180, 0:320]
    for tick in range(sys.maxsize):
        for pane in range(9):
            rgb = [(x + 4 * tick) % 256, (y + 28 * pane) % 256, (x + y - 2 * tick) % 256]
            deck.post_frame(pane, numpy.stack(rgb, axis=2).astype(numpy.uint8))  # a new array: it is shown as it is
        if stop.wait(0.04):
            return


application = QApplication(sys.argv)
installation = os.environ.get("PANEDECK_INSTALLATION", "/usr/share/panedeck")
panedeck.CPaneDeck.SetInstallation(installation, "")
deck = panedeck.CPaneDeck(None, panedeck.WND_TYPE_MONITOR, 16)
deck.sig_activeWnd.connect(lambda pane: print("active:", pane))
deck.resize(960, 600)
deck.SetShowWndNo(9)
deck.show()
stop = threading.Event()
player = threading.Thread(target=play, args=(deck, stop))
player.start()
if len(sys.argv) > 1:
    QTimer.singleShot(1000, lambda: (deck.grab().save(sys.argv[1]), application.quit()))
application.exec_()
stop.set()
player.join()
