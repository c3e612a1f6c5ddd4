#pragma once

#include <QString>

class QPagedPaintDevice;

// What the user chose in the print dialog: a list layout or the covers, the orientation, and where
// the pages go.
struct PrintRequest {
  // Index into the print controller's list columns; ignored when printing covers.
  int layout = 0;
  bool covers = false;
  bool landscape = false;
  // A device the front end owns (the GUI's printer); when null, a PDF is written to pdfPath.
  QPagedPaintDevice* device = nullptr;
  QString pdfPath;
};
