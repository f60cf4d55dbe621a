# A window that says what fingers do to it.
import math
import sys

from PyQt5.QtCore import QEvent, Qt
from PyQt5.QtWidgets import QApplication, QLabel


class Paper(QLabel):
    def __init__(self):
        super().__init__("nothing", objectName="paper", alignment=Qt.AlignCenter)
        self.setAttribute(Qt.WA_AcceptTouchEvents)
        self.began = None

    def event(self, event):
        if event.type() not in (QEvent.TouchBegin, QEvent.TouchUpdate, QEvent.TouchEnd):
            return super().event(event)
        if event.type() == QEvent.TouchBegin:
            self.began = None
        if len(event.touchPoints()) == 2:
            one, other = [p.pos() for p in sorted(event.touchPoints(), key=lambda p: p.id())]
            way = complex(other.x() - one.x(), other.y() - one.y())
            self.began = self.began or way
            change = way / self.began
            turn = math.atan2(change.imag, change.real)
            self.setText(f"{abs(change):.1f} times, {turn:.1f} round")
        return True


application = QApplication(sys.argv)
paper = Paper()
paper.resize(600, 400)
paper.show()
sys.exit(application.exec_())
