#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace jet {

/// A failure in the engine's own terms. `text` is complete: it already tells the place when there is one.
struct Error {
  int number = 0;
  std::string text;
  /// Byte offset in the statement, where the failure has a place there.
  std::optional<size_t> place;
  /// The text names what it is about: it gets no place, wherever it arose.
  bool complete = false;
};

/// Carries an `Error` through the engine to its object.
struct Failure {
  Error error;
};

/// Numbers of the errors that the dialect raises itself.
enum ErrorNumber : int {
  overflow = 6,
  divisionByZero = 11,
  tableExists = 3010,
  objectExists = 3012,
  duplicateValue = 3022,
  readOnlyDatabase = 3027,
  indexNull = 3058,
  tooFewParameters = 3061,
  duplicateOutput = 3063,
  expressionSyntax = 3075,
  unknownTable = 3078,
  ambiguousName = 3079,
  unknownFunction = 3085,
  deleteTarget = 3086,
  orderWithDistinct = 3093,
  notAggregated = 3122,
  unknownField = 3127,
  deleteTableNeeded = 3128,
  invalidStatement = 3129,
  deleteSyntax = 3130,
  fromSyntax = 3131,
  groupSyntax = 3132,
  havingSyntax = 3133,
  insertSyntax = 3134,
  joinSyntax = 3135,
  orderSyntax = 3138,
  parameterSyntax = 3139,
  selectSyntax = 3141,
  trailingText = 3142,
  transformSyntax = 3143,
  updateSyntax = 3144,
  whereSyntax = 3145,
  textTooLong = 3163,
  tooManyFields = 3190,
  duplicateField = 3191,
  relatedRecords = 3200,
  relatedRecordNeeded = 3201,
  circularQuery = 3102,
  itemNotFound = 3265,
  subqueryColumns = 3306,
  unionColumns = 3307,
  valueRequired = 3314,
  constraintSyntax = 3289,
  createTableSyntax = 3290,
  createIndexSyntax = 3291,
  fieldSyntax = 3292,
  alterTableSyntax = 3293,
  dropSyntax = 3295,
  emptyText = 3315,
  valueCount = 3346,
  numberTooLarge = 3349,
  tooComplex = 3360,
  noSuchIndex = 3372,
  noSuchTable = 3376,
  fieldExists = 3380,
  noSuchField = 3381,
  typeMismatch = 3464,
};

/// An error at `place` of `statement`: the text gets the position (characters from 1) and the words there.
Error errorAt(int number, std::string text, std::string_view statement, size_t place);

}  // namespace jet
