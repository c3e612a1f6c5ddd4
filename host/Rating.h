#pragma once

#include <QString>
#include <QtGlobal>

// "myRating" is stored from 0 to 10, ten being five stars: the scale the music library's
// ratings arrive on. Every front end shows it as five stars with halves and stores what the user
// chose as it is.
namespace Rating {

inline constexpr qint64 maximum = 10;

// 9 -> "★★★★½", 4 -> "★★☆☆☆"; empty for 0, unrated. A value outside 0-10 shows as the nearest
// end of the scale.
QString stars(qint64 rating);

}  // namespace Rating
