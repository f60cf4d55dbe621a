# A window with so many labels that a tree of it has 10,000 elements, and a button that changes one.
# As "ticking" its first label says again and again when it was changed.
import sys
import time

from PyQt5.QtCore import QTimer
from PyQt5.QtWidgets import QApplication, QGridLayout, QLabel, QPushButton, QWidget

application = QApplication(sys.argv)
window = QWidget(windowTitle="Many")
grid = QGridLayout(window)
grid.setSpacing(0)
labels = [QLabel(f"n{number}") for number in range(int(sys.argv[1]))]
for number, label in enumerate(labels):
    grid.addWidget(label, 1 + number // 100, number % 100)
button = QPushButton("Change")
button.clicked.connect(lambda: labels[-1].setText("changed"))
grid.addWidget(button, 0, 0, 1, 100)
if "ticking" in sys.argv:
    timer = QTimer(interval=250)
    timer.timeout.connect(lambda: labels[0].setText(str(time.time() * 1000)))
    timer.start()
window.show()
sys.exit(application.exec_())
