#include "Settings.h"

#include <QDateTime>
#include <QStandardPaths>

Settings::Settings(const QString& path)
    : settings_(std::make_unique<QSettings>(path.isEmpty() ? defaultPath() : path, QSettings::IniFormat)) {}

Settings::~Settings() { settings_->sync(); }

QString Settings::defaultPath() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/discary/discary.conf");
}

QString Settings::fileName() const { return settings_->fileName(); }

void Settings::registerDefaults(const QVariantMap& defaults) {
  for (auto it = defaults.begin(); it != defaults.end(); ++it) defaults_.insert(it.key(), it.value());
}

bool Settings::leniently(const QVariant& value, bool* ok) {
  if (ok) *ok = true;
  switch (value.metaType().id()) {
    case QMetaType::Bool:
      return value.toBool();
    case QMetaType::QString:
    case QMetaType::QByteArray: {
      const QString s = value.toString().trimmed().toLower();
      if (s == "yes" || s == "true" || s == "on" || s == "y") return true;
      if (s == "no" || s == "false" || s == "off" || s == "n" || s.isEmpty()) return false;
      bool numeric = false;
      const double d = s.toDouble(&numeric);
      if (ok) *ok = numeric;
      return numeric && d != 0;
    }
    default: {
      bool numeric = false;
      const double d = value.toDouble(&numeric);
      if (ok) *ok = numeric;
      return numeric && d != 0;
    }
  }
}

QVariant Settings::coercedLike(const QVariant& value, const QVariant& model) {
  if (!model.isValid() || !value.isValid()) return value;
  switch (model.metaType().id()) {
    case QMetaType::Bool:
      return leniently(value);
    case QMetaType::Double:
    case QMetaType::Float: {
      bool ok = false;
      const double d = value.metaType().id() == QMetaType::Bool ? double(value.toBool()) : value.toString().trimmed().toDouble(&ok);
      return ok || value.metaType().id() == QMetaType::Bool ? d : value.toDouble();
    }
    case QMetaType::Int:
    case QMetaType::LongLong: {
      bool ok = false;
      const double d = value.toString().trimmed().toDouble(&ok);
      if (ok) return qint64(d);
      return qint64(value.metaType().id() == QMetaType::Bool && value.toBool() ? 1 : 0);
    }
    case QMetaType::QString:
      return value.canConvert<QString>() ? value.toString() : model;
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
      const QVariantList m = model.toList();
      if (!value.canConvert<QVariantList>() || value.metaType().id() == QMetaType::QString) return model;
      QVariantList out;
      const QVariantList v = value.toList();
      for (int i = 0; i < v.size(); ++i) out << coercedLike(v[i], m.isEmpty() ? QVariant() : m[qMin(i, int(m.size()) - 1)]);
      return out;
    }
    case QMetaType::QVariantMap:
      return value.canConvert<QVariantMap>() && value.metaType().id() != QMetaType::QString ? value.toMap() : model;
    case QMetaType::QDateTime: {
      const QDateTime d = value.toDateTime();
      return d.isValid() ? QVariant(d) : QVariant();
    }
    default:
      return value;
  }
}

QVariant Settings::objectForKey(const QString& key) const {
  const QVariant model = defaults_.value(key);
  if (settings_->contains(key)) return coercedLike(settings_->value(key), model);
  return model;
}

bool Settings::boolForKey(const QString& key) const { return leniently(objectForKey(key)); }

double Settings::floatForKey(const QString& key) const { return coercedLike(objectForKey(key), 0.0).toDouble(); }

qint64 Settings::integerForKey(const QString& key) const { return coercedLike(objectForKey(key), qint64(0)).toLongLong(); }

QString Settings::stringForKey(const QString& key) const {
  const QVariant v = objectForKey(key);
  return v.canConvert<QString>() ? v.toString() : QString();
}

bool Settings::hasUserValue(const QString& key) const { return settings_->contains(key); }

void Settings::setObject(const QString& key, const QVariant& value) {
  if (!value.isValid()) {
    removeObject(key);
    return;
  }
  settings_->setValue(key, value);
}

void Settings::removeObject(const QString& key) { settings_->remove(key); }

QStringList Settings::userKeys() const { return settings_->allKeys(); }

void Settings::sync() { settings_->sync(); }
