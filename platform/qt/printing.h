// Printing: the dialog, and the page as a painter draws it.
#pragma once

#include "platform/window.h"

class QPrinter;
class QWidget;

namespace lorivan {

/// As Window::print.
Result<bool> printOnPaper(QWidget* parent, const PrintSpec& spec,
                          const std::function<Status(PrintPage&)>& draw);

/// One page on a printer that is set up.
Status printPage(QPrinter& printer, const std::function<Status(PrintPage&)>& draw);

}  // namespace lorivan
