#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>
#include <memory>

// The user's settings over a domain of registered defaults: a default applies only while the
// user has stored no value of their own, and removing the user's value brings it back. Typed
// reads are lenient: a stored value of the wrong type is read as the registered type, never
// refused ("yes" for a boolean, "3" for a number).
class Settings {
 public:
  // An INI file at the path; the standard place when empty.
  explicit Settings(const QString& path = {});
  ~Settings();

  void registerDefaults(const QVariantMap& defaults);
  const QVariantMap& registeredDefaults() const { return defaults_; }

  // The user's value, else the default; the registered default's shape decides how a stored
  // value is read back (a list of booleans stays a list of booleans).
  QVariant objectForKey(const QString& key) const;
  bool boolForKey(const QString& key) const;
  double floatForKey(const QString& key) const;
  qint64 integerForKey(const QString& key) const;
  QString stringForKey(const QString& key) const;

  bool hasUserValue(const QString& key) const;
  void setObject(const QString& key, const QVariant& value);
  void removeObject(const QString& key);
  QStringList userKeys() const;
  void sync();
  QString fileName() const;

  static QString defaultPath();
  // The value read as the kind the model holds: used for reads and for values typed by users.
  static QVariant coercedLike(const QVariant& value, const QVariant& model);
  static bool leniently(const QVariant& value, bool* ok = nullptr);

 private:
  std::unique_ptr<QSettings> settings_;
  QVariantMap defaults_;
};
