#pragma once

#include "AttributeKind.h"

#include <QLatin1StringView>
#include <QVariant>

// What the catalogue does with a value of one kind wherever it meets one: the store's column,
// sorting, searching, printing and reading what people or files give. Code that treats kinds
// differently asks the kind rather than naming it, so a kind is described here once.
class ValueKind {
 public:
  // How the store keeps the value and JSON writes it.
  enum class Storage {
    Text,
    Integer,
    Boolean,       // 0/1 in the store, true/false in JSON
    Milliseconds,  // a date as milliseconds since 1970 UTC in the store, ISO text in JSON
  };
  // What a list sorts the value by.
  enum class Order {
    Text,          // case-folded text
    Number,        // the value itself
    Decimal,       // a number written as text, read leniently
    Seconds,       // a duration written as "m:ss"
    Milliseconds,  // a date
  };

  static const ValueKind& of(AttributeKind kind);

  AttributeKind kind() const { return kind_; }
  Storage storage() const { return storage_; }
  Order order() const { return order_; }
  // The type of the store's column.
  QLatin1StringView sqlType() const { return storage_ == Storage::Text ? sqlText : sqlInteger; }
  bool isDate() const { return storage_ == Storage::Milliseconds; }
  // Plain words, the only values a search of "any field" looks through.
  bool isPlainText() const { return order_ == Order::Text; }
  // A number held as text: printouts align it as a number.
  bool isNumberText() const { return storage_ == Storage::Text && order_ != Order::Text; }

  // The value as the kind holds it in memory (QString, UTC QDateTime, qint64 or bool); an
  // invalid QVariant for an empty one. Sets *ok to false when the value cannot be read.
  QVariant coerced(const QVariant& value, bool* ok) const;

 private:
  static constexpr QLatin1StringView sqlText{"TEXT"};
  static constexpr QLatin1StringView sqlInteger{"INTEGER"};

  constexpr ValueKind(AttributeKind kind, Storage storage, Order order) : kind_(kind), storage_(storage), order_(order) {}

  AttributeKind kind_;
  Storage storage_;
  Order order_;
};
