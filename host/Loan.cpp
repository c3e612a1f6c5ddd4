#include "Loan.h"

#include "CdKeys.h"
#include "Entry.h"

bool Loan::isOverdue(const Entry& entry, const QDateTime& now) {
  if (entry.value(CdKeys::status).toLongLong() != 1) return false;
  const QVariant due = entry.value(CdKeys::dueDate);
  return due.isValid() && due.toDateTime().toUTC().date() < now.toUTC().date();
}
