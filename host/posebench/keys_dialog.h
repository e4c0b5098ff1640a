// keys_dialog.h - what the mouse and the keys do, as a table.
#pragma once

class QWidget;

namespace quillon {

void showKeysDialog(QWidget* parent); // until it is closed

} // namespace quillon
