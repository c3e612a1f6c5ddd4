#include "MusicFields.h"

#include "CdKeys.h"
#include "FieldTypes.h"

#include <QHash>
#include <algorithm>

namespace {
using K = AttributeKind;
using Row = MusicField;
constexpr auto Off = MusicField::Off;
constexpr auto Long = MusicField::Long;
constexpr auto Extra = MusicField::Extra;
constexpr std::optional<AttributeKind> Derived;

// The stored rows keep the column order of the entries table: a new stored field goes after the
// last of them, where an upgrade of the store adds its column. Positions in the ordered lists
// are spaced so that a new field can slot in between.
std::vector<MusicField> rows() {
  return {
      Row(CdKeys::title, "Title", K::Text, FieldTypeText, ColumnTypeText).width(250).panel(10).fullscreen(10),
      Row(CdKeys::sortTitle, "Sort Title", K::Text, FieldTypeText, ColumnTypeText).width(200).panel(20, Off).personal(240),
      Row(CdKeys::artist, "Artist", K::Text, FieldTypeComboBox, ColumnTypeText).width(150).panel(30).fullscreen(20).feed(10),
      Row(CdKeys::sortArtist, "Sort Artist", K::Text, FieldTypeText, ColumnTypeText).width(150).panel(40, Off).personal(390),
      Row(CdKeys::composer, "Composer", K::Text, FieldTypeTokens, ColumnTypeText).width(150).panel(50).fullscreen(30).feed(30),
      Row(CdKeys::conductor, "Conductor", K::Text, FieldTypeTokens, ColumnTypeText).width(150).panel(60).fullscreen(50),
      Row(CdKeys::producer, "Producer", K::Text, FieldTypeTokens, ColumnTypeText).width(150).panel(160),
      Row(CdKeys::mixedBy, "Mixed By", K::Text, FieldTypeTokens, ColumnTypeText).width(150).panel(170),
      Row(CdKeys::arrangedBy, "Arranged By", K::Text, FieldTypeTokens, ColumnTypeText).width(150).panel(180),
      Row(CdKeys::label, "Label", K::Text, FieldTypeComboBox, ColumnTypeText).panel(70).fullscreen(40).feed(20),
      Row(CdKeys::genre, "Genre", K::Text, FieldTypeTokens, ColumnTypeText).panel(80).fullscreen(60).feed(40),
      Row(CdKeys::format, "Format", K::Text, FieldTypeComboBox, ColumnTypeText).panel(190),
      Row(CdKeys::releaseDate, "Release Date", K::Date, FieldTypeDate, ColumnTypeDate).panel(90).fullscreen(80),
      Row(CdKeys::originalReleaseDate, "Original Release Date", K::Date, FieldTypeDate, ColumnTypeDate).panel(100),
      Row(CdKeys::duration, "Duration", K::TimeText, FieldTypeText, ColumnTypeNumber).width(40).panel(140).fullscreen(70).feed(50),
      Row(CdKeys::numberOfTracks, "Number of Tracks", K::NumberText, FieldTypeText, ColumnTypeNumber).panel(150),
      Row(CdKeys::discs, "Discs", K::NumberText, FieldTypeText, ColumnTypeNumber).width(20).panel(130),
      Row(CdKeys::discID, "Disc ID", K::Text, FieldTypeText, ColumnTypeText).width(80).panel(210, Off),
      Row(CdKeys::upc, "UPC", K::Text, FieldTypeText, ColumnTypeText).width(95).panel(230),
      Row(CdKeys::asin, "ASIN", K::Text, FieldTypeText, ColumnTypeText).panel(220, Off),
      Row(CdKeys::catalogNumber, "Catalog Number", K::Text, FieldTypeText, ColumnTypeText).panel(240, Off),
      Row(CdKeys::price, "Price", K::NumberText, FieldTypeText, ColumnTypeNumber).width(55).panel(120).feed(60),
      Row(CdKeys::paid, "Paid", K::NumberText, FieldTypeText, ColumnTypeNumber).width(55).panel(320, Extra).personal(200),
      Row(CdKeys::rating, "Rating", K::NumberText, FieldTypeText, ColumnTypeNumber).width(40).panel(110).personal(230),
      Row(CdKeys::myRating, "My Rating", K::Integer, FieldTypeRating, ColumnTypeRating).width(77).column().smart(),
      Row(CdKeys::awards, "Awards", K::Text, FieldTypeText, ColumnTypeText).width(150).panel(200, Long).fullscreen(90),
      Row(CdKeys::comments, "Comments", K::Text, FieldTypeLongText, ColumnTypeText).width(200).panel(250, Long).personal(50),
      Row(CdKeys::summary, "Summary", K::Text, FieldTypeLongText, ColumnTypeText).width(200).panel(260, Long).fullscreen(140),
      Row(CdKeys::tags, "Tags", K::Text, FieldTypeTokens, ColumnTypeText).panel(550, Extra | Long).personal(260),
      Row(CdKeys::url, "URL", K::Text, FieldTypeText, ColumnTypeText).width(200).panel(560, Extra | Long).personal(290),
      Row(CdKeys::location, "Location", K::Text, FieldTypeComboBox, ColumnTypeText).panel(340, Extra).personal(170).fullscreen(100),
      Row(CdKeys::collectionID, "Collection ID", K::Text, FieldTypeText, ColumnTypeText).width(55).panel(350, Extra).personal(40),
      Row(CdKeys::purchasedAt, "Purchased At", K::Text, FieldTypeComboBox, ColumnTypeText).panel(300, Extra).personal(220),
      Row(CdKeys::purchasedOn, "Purchased On", K::Date, FieldTypeDate, ColumnTypeDate).panel(310, Extra).personal(210),
      Row(CdKeys::borrowedBy, "Borrowed By", K::Text, FieldTypeBorrower, ColumnTypeText).panel(270, Extra).personal(20),
      Row(CdKeys::borrowedOn, "Borrowed On", K::Date, FieldTypeDate, ColumnTypeDate).panel(280, Extra).personal(30),
      Row(CdKeys::dueDate, "Due Date", K::Date, FieldTypeDate, ColumnTypeDate).panel(290, Extra | Off).personal(80),
      Row(CdKeys::lastPlayed, "Last Played", K::Date, FieldTypeDate, ColumnTypeDate).panel(330, Extra).personal(120),
      Row(CdKeys::dateAdded, "Date Added", K::Date, FieldTypeDate, ColumnTypeDate).panel(360, Extra).personal(60),
      Row(CdKeys::dateEdited, "Date Edited", K::Date, FieldTypeDate, ColumnTypeDate).column().smart().personal(70),
      Row(CdKeys::status, "Status", K::Integer, FieldTypeText, ColumnTypeStoredNumber).personal(250),
      Row(CdKeys::itunes, "From Music Library", K::Integer, FieldTypeText, ColumnTypeText).personal(110),
      Row(CdKeys::custom1, "Custom 1", K::Text, FieldTypeComboBox, ColumnTypeText).panel(370, Extra).fullscreen(120),
      Row(CdKeys::custom2, "Custom 2", K::Text, FieldTypeComboBox, ColumnTypeText).panel(380, Extra).fullscreen(130),
      Row(CdKeys::custom3, "Custom 3", K::Text, FieldTypeComboBox, ColumnTypeText).panel(390, Extra | Off),
      Row(CdKeys::custom4, "Custom 4", K::Text, FieldTypeComboBox, ColumnTypeText).panel(400, Extra | Off),
      Row(CdKeys::custom5, "Custom 5", K::Text, FieldTypeComboBox, ColumnTypeText).panel(410, Extra | Off),
      Row(CdKeys::custom6, "Custom 6", K::Text, FieldTypeComboBox, ColumnTypeText).panel(420, Extra | Off),
      Row(CdKeys::custom7, "Custom 7", K::Text, FieldTypeComboBox, ColumnTypeText).panel(430, Extra | Off),
      Row(CdKeys::custom8, "Custom 8", K::Text, FieldTypeComboBox, ColumnTypeText).panel(440, Extra | Off),
      Row(CdKeys::custom9, "Custom 9", K::Text, FieldTypeComboBox, ColumnTypeText).panel(450, Extra | Off),
      Row(CdKeys::custom10, "Custom 10", K::Text, FieldTypeComboBox, ColumnTypeText).panel(460, Extra | Off),
      Row(CdKeys::customDate1, "Custom Date 1", K::Date, FieldTypeDate, ColumnTypeDate).panel(470, Extra),
      Row(CdKeys::customCheckbox1, "Custom Checkbox 1", K::Boolean, FieldTypeCheckbox, ColumnTypeCheckbox).panel(490, Extra),
      Row(CdKeys::customTag1, "Custom Tags 1", K::Text, FieldTypeTokens, ColumnTypeText).panel(510, Extra | Long),
      Row(CdKeys::customText1, "Custom Text 1", K::Text, FieldTypeLongText, ColumnTypeText).panel(530, Extra | Long),
      Row(CdKeys::customDate2, "Custom Date 2", K::Date, FieldTypeDate, ColumnTypeDate).panel(480, Extra | Off),
      Row(CdKeys::customCheckbox2, "Custom Checkbox 2", K::Boolean, FieldTypeCheckbox, ColumnTypeCheckbox).panel(500, Extra | Off),
      Row(CdKeys::customTag2, "Custom Tags 2", K::Text, FieldTypeTokens, ColumnTypeText).panel(520, Extra | Off | Long),
      Row(CdKeys::customText2, "Custom Text 2", K::Text, FieldTypeLongText, ColumnTypeText).panel(540, Extra | Off | Long),
      Row(CdKeys::addressBookID, "Contact", K::Text, FieldTypeText, ColumnTypeText).personal(10),
      Row(CdKeys::extraData, "Extra Data", K::Text, FieldTypeText, ColumnTypeText).personal(90),
      Row(CdKeys::hasMovieLink, "Has Movie Link", K::Boolean, FieldTypeText, ColumnTypeText).personal(100),
      Row(CdKeys::lastUsedCount, "Times Used", K::Integer, FieldTypeText, ColumnTypeNumber).width(40).column().smart().personal(130),
      Row(CdKeys::lastUsed, "Last Used", K::Date, FieldTypeText, ColumnTypeText).personal(140),
      Row(CdKeys::lowestNewPrice, "Lowest New Price", K::NumberText, FieldTypeText, ColumnTypeText).personal(180),
      Row(CdKeys::lowestUsedPrice, "Lowest Used Price", K::NumberText, FieldTypeText, ColumnTypeText).personal(190),
      Row(CdKeys::uploaded, "Uploaded", K::Boolean, FieldTypeText, ColumnTypeText).personal(280),
      Row(CdKeys::onSale, "On Sale", K::Boolean, FieldTypeText, ColumnTypeText).personal(300),
      Row(CdKeys::hasBeenSold, "Sold", K::Boolean, FieldTypeText, ColumnTypeText).personal(310),
      Row(CdKeys::soldOn, "Sold On", K::Date, FieldTypeText, ColumnTypeText).personal(320),
      Row(CdKeys::askingPrice, "Asking Price", K::NumberText, FieldTypeText, ColumnTypeText).personal(330),
      Row(CdKeys::buyerAddress, "Buyer Address", K::Text, FieldTypeText, ColumnTypeText).personal(340),
      Row(CdKeys::buyerEmail, "Buyer Email", K::Text, FieldTypeText, ColumnTypeText).personal(350),
      Row(CdKeys::buyerName, "Buyer Name", K::Text, FieldTypeText, ColumnTypeText).personal(360),
      Row(CdKeys::placedForSaleAt, "Placed for Sale At", K::Text, FieldTypeText, ColumnTypeText).personal(370),
      Row(CdKeys::soldPrice, "Sold Price", K::NumberText, FieldTypeText, ColumnTypeText).personal(380),
      Row(CdKeys::dogTag, "Dog Tag", K::Text, FieldTypeText, ColumnTypeStoredNumber).column().smart(),
      Row(CdKeys::localeLanguage, "Language", K::Text, FieldTypeText, ColumnTypeText).moderatorOnlyColumn(),
      // Catalogue version 6: what the online lookup identifies a disc by.
      Row(CdKeys::releaseID, "Release ID", K::Text, FieldTypeText, ColumnTypeText),
      Row(CdKeys::musicBrainzDiscID, "MusicBrainz Disc ID", K::Text, FieldTypeText, ColumnTypeText),
      Row(CdKeys::barcodeSource, "Barcode Source", K::Text, FieldTypeText, ColumnTypeText),
      // Catalogue version 8: the state of the user's copy, and the release it is on the public
      // music database, so that importing its collection export again adds nothing twice.
      Row(CdKeys::mediaCondition, "Media Condition", K::Text, FieldTypeComboBox, ColumnTypeText).panel(352, Extra),
      Row(CdKeys::sleeveCondition, "Sleeve Condition", K::Text, FieldTypeComboBox, ColumnTypeText).panel(354, Extra),
      Row(CdKeys::discogsReleaseID, "Discogs Release ID", K::Text, FieldTypeText, ColumnTypeText),
      Row(CdKeys::uid, "Unique ID", Derived, FieldTypeText, ColumnTypeStoredNumber).personal(270),
      Row(CdKeys::statusImage, "Status", Derived, FieldTypeText, ColumnTypeImage).width(18).column(),
      Row(CdKeys::collectionNames, "Collections", Derived, FieldTypeText, ColumnTypeText).width(200).column().fullscreen(110),
      Row(CdKeys::hasCoverImage, "Has Cover", Derived, FieldTypeText, ColumnTypeText).smart(),
      Row(CdKeys::rated, "Rated", Derived, FieldTypeComboBox, ColumnTypeText),
      Row(CdKeys::links, "Links", Derived, FieldTypeText, ColumnTypeText).personal(160),
      Row(CdKeys::lentHistory, "Loan History", Derived, FieldTypeText, ColumnTypeText).personal(150),
  };
}
}  // namespace

const std::vector<MusicField>& MusicFields::all() {
  static const std::vector<MusicField> table = rows();
  return table;
}

const MusicField* MusicFields::find(const QString& key) {
  static const QHash<QString, const MusicField*> byKey = [] {
    QHash<QString, const MusicField*> index;
    for (const MusicField& field : all()) index.insert(field.key, &field);
    return index;
  }();
  return byKey.value(key, nullptr);
}

std::vector<const MusicField*> MusicFields::ordered(int MusicField::*position) {
  std::vector<const MusicField*> fields;
  for (const MusicField& field : all())
    if (field.*position > 0) fields.push_back(&field);
  std::stable_sort(fields.begin(), fields.end(),
                   [position](const MusicField* a, const MusicField* b) { return a->*position < b->*position; });
  return fields;
}
