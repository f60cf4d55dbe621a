# A field, a button and as many labels as asked for, as form.html has them.
import sys

from PyQt5.QtWidgets import QApplication, QGridLayout, QLabel, QLineEdit, QPushButton, QWidget

application = QApplication(sys.argv[:1])
window = QWidget(windowTitle="Form")
window.setFixedSize(1000, 700)
grid = QGridLayout(window)
grid.setSpacing(0)
grid.addWidget(QLineEdit(objectName="name"), 0, 0, 1, 50)
grid.addWidget(QPushButton("Change", objectName="change"), 0, 50, 1, 50)
for number in range(int(sys.argv[1])):
    grid.addWidget(QLabel(f"item {number}"), 1 + number // 100, number % 100)
window.show()
sys.exit(application.exec_())
