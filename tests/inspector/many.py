# A window with so many labels that a tree of it has 10,000 elements, and a button that changes one.
import sys

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
window.show()
sys.exit(application.exec_())
