# What a page has to bear: twenty windows, texts with markup and control characters, a clock that is
# painted sixty times a second.
import sys

from PyQt5.QtCore import QTimer
from PyQt5.QtWidgets import QApplication, QLabel, QPushButton, QVBoxLayout, QWidget

application = QApplication(sys.argv)
window = QWidget(windowTitle="<b>Unruly</b> & \u202Esons")
layout = QVBoxLayout(window)
for text in ["<img src=x onerror=alert(1)>", "a\x07b\x1b[31mc", "</script>'\"", "\U0001F600 \u0627\u0644"]:
    layout.addWidget(QLabel(text, textFormat=0))
clock = QLabel("0")
layout.addWidget(clock)
others = []


def open_more():
    for number in range(20):
        others.append(QLabel(f"window {number}", windowTitle=f"Window {number}"))
        others[-1].show()


button = QPushButton("Open twenty", clicked=open_more)
layout.addWidget(button)
timer = QTimer(interval=16)
timer.timeout.connect(lambda: clock.setText(str(int(clock.text()) + 1)))
timer.start()
window.show()
sys.exit(application.exec_())
