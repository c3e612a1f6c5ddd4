#pragma once

#include <QSet>
#include <QString>
#include <vector>

// A named group of entries. The borrowed and wish-list collections are not stored: their members
// are the entries whose "status" is 1 (lent out) or 2 (wanted).
class Collection {
 public:
  enum class Kind { User, Borrowed, WishList };

  Collection(qint64 id, QString name, Kind kind = Kind::User) : id_(id), name_(std::move(name)), kind_(kind) {}

  qint64 id() const { return id_; }
  const QString& name() const { return name_; }
  Kind kind() const { return kind_; }
  bool isUser() const { return kind_ == Kind::User; }
  // Members of a user collection, in the order they were added.
  const std::vector<qint64>& memberUIDs() const { return members_; }
  bool contains(qint64 uid) const { return memberSet_.contains(uid); }

 private:
  friend class Store;
  qint64 id_;
  QString name_;
  Kind kind_;
  std::vector<qint64> members_;
  QSet<qint64> memberSet_;
};
