#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// Small string tests and cuts used when reading text from files and web pages.
namespace StringText {

// True for any character, whitespace included.
bool isNotEmpty(const QString& text);

// First substring between the two markers, the end searched after the start, or nullopt when
// either marker is missing.
std::optional<QString> stringBetween(const QString& text, const QString& start, const QString& end);

// Every substring between successive occurrences of the two markers, in order. Empty markers
// give an empty list.
QStringList stringsBetween(const QString& text, const QString& start, const QString& end);

QString stringByRemovingLeadingAndTrailingSpaces(const QString& text);

}  // namespace StringText
