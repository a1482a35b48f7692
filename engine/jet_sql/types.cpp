#include "engine/jet_sql/binder.h"
#include "platform/text/quotes.h"

namespace jet {

bool isTextType(Type type) { return type == Type::Text || type == Type::Memo; }

bool isWholeType(Type type) {
  return type == Type::YesNo || type == Type::Byte || type == Type::Integer || type == Type::Long;
}

bool isNumberType(Type type) {
  return isWholeType(type) || type == Type::Currency || type == Type::Single || type == Type::Double;
}

bool isTruth(const Expression& e) {
  switch (e.kind) {
    case ExpressionKind::Compare:
    case ExpressionKind::Between:
    case ExpressionKind::InList:
    case ExpressionKind::InQuery:
    case ExpressionKind::IsNull:
    case ExpressionKind::Like:
    case ExpressionKind::Exists:
    case ExpressionKind::Quantified:
      return true;
    case ExpressionKind::Not:
    case ExpressionKind::Logic:
      return e.type == Type::YesNo;
    case ExpressionKind::Call:
      return e.special == Special::IsNull;
    default:
      return false;
  }
}

Type commonType(Type a, Type b) {
  if (a == b) return a;
  if (a == Type::Unknown || b == Type::Unknown) return Type::Unknown;
  if (isTextType(a) && isTextType(b)) return Type::Memo;
  if (isTextType(a) || isTextType(b)) return Type::Text;
  if (a == Type::Date || b == Type::Date)
    return isNumberType(a) || isNumberType(b) ? Type::Date : Type::Unknown;
  if (!isNumberType(a) || !isNumberType(b)) return Type::Unknown;
  if (isWholeType(a) && isWholeType(b)) return std::max(a, b);  // the enumeration goes from narrow to wide
  if (a == Type::Single || b == Type::Single) {
    const Type other = a == Type::Single ? b : a;
    return isWholeType(other) && other != Type::Long ? Type::Single : Type::Double;
  }
  return a == Type::Double || b == Type::Double ? Type::Double : Type::Currency;
}

Type commonType(const Expression& a, const Expression& b) {
  if (a.kind == ExpressionKind::Null) return b.type;
  if (b.kind == ExpressionKind::Null) return a.type;
  return commonType(a.type, b.type);
}

std::string quotedName(std::string_view name) { return inQuotes(name, '"'); }

std::string rowIdOf(const Source& source) {
  return "\"t" + std::to_string(source.number) + "\"." + quotedName(source.table->rowId);
}

}  // namespace jet
