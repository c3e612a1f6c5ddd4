#pragma once

#include <QVariantList>

// The layouts a music collection prints in, as the print panel takes them: "name",
// "description" and, except for the layout that prints the current view, "columns".
namespace PrintLayouts {

// Info, Classical, Value, Borrowed and Custom, in the order the print dialog offers them.
QVariantList listLayouts();

}  // namespace PrintLayouts
