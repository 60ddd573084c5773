#pragma once

class QWidget;

/// Shows what this program is, in a panel over `parent` (null for none). It does not hold up the rest; asked
/// for again while it is open, the same one comes forward.
void showAboutPanel(QWidget *parent);
