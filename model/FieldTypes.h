#pragma once

// The framework's codes; their numbers are part of its contract and must not change.

// How the edit panel draws a field.
enum FieldType : int {
  FieldTypeText = 1,
  FieldTypeLongText = 2,
  FieldTypeComboBox = 3,  // text with a pull-down of values already used
  FieldTypeCheckbox = 4,
  FieldTypeDate = 5,
  FieldTypeBorrower = 7,
  FieldTypeRating = 8,
  FieldTypeTokens = 11,  // several values in one field
};

// How a list column shows and sorts its values.
enum ColumnType : int {
  ColumnTypeDate = 1,
  ColumnTypeImage = 2,
  ColumnTypeRating = 3,
  ColumnTypeCheckbox = 4,
  ColumnTypeNumber = 5,  // a number held as text, sorted as a number
  ColumnTypeText = 7,
  ColumnTypeStoredNumber = 8,
};

// What choosing an item of the list's filter menu does.
enum FilterAction : int {
  FilterActionValue = 1,           // filter on a value of the field
  FilterActionAll = 6,             // show all entries
  FilterActionSameAsSelected = 7,  // entries sharing the selected entry's value
};
