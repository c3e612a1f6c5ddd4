#pragma once

#include <QDateTime>

class Entry;

// An entry lent out: "status" 1, with the borrower, the day it went and the day it is due back.
namespace Loan {

// Lent out and due back on a day before now's (UTC days: a loan due today is not late yet).
bool isOverdue(const Entry& entry, const QDateTime& now);

}  // namespace Loan
