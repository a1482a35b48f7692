#include "host/lisp/printer.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "host/lisp/objects.h"
#include "platform/text/utf.h"

namespace lisp {
namespace {

void appendEscaped(std::wstring& out, const std::wstring& text) {
  out += L'"';
  for (const wchar_t c : text) {
    switch (c) {
      case L'"':
        out += L"\\\"";
        break;
      case L'\\':
        out += L"\\\\";
        break;
      case L'\n':
        out += L"\\n";
        break;
      case L'\r':
        out += L"\\r";
        break;
      case L'\t':
        out += L"\\t";
        break;
      case 27:
        out += L"\\e";
        break;
      default:
        if ((c >= 0 && c < 32) || c == 127) {
          wchar_t octal[8];
          std::swprintf(octal, 8, L"\\%03o", static_cast<unsigned>(c));
          out += octal;
        } else {
          out += c;
        }
    }
  }
  out += L'"';
}

std::wstring address(const void* object) {
  wchar_t text[24];
  std::swprintf(text, 24, L"@%llx", reinterpret_cast<unsigned long long>(object));
  return text;
}

std::wstring printedFunction(const Function& function) {
  const wchar_t* const kind = function.kind == Function::Kind::usubr      ? L"USUBR"
                              : function.kind == Function::Kind::external ? L"EXRXSUBR"
                                                                          : L"SUBR";
  return std::wstring(L"#<") + kind + L" " + address(&function) + L" " + function.name + L">";
}

// Open lists are kept here instead of on the stack: lists may be very deep.
struct Printer {
  std::wstring out;
  Style style;

  void atom(const Value& value) {
    switch (value.type()) {
      case Type::nil:
        out += L"nil";
        break;
      case Type::integer:
        out += std::to_wstring(value.integer());
        break;
      case Type::real:
        out += printedReal(value.real());
        break;
      case Type::symbol:
        out += value.symbol()->name;
        break;
      case Type::entity: {
        wchar_t text[48];
        std::swprintf(text, 48, L"<Entity name: %llx>", static_cast<unsigned long long>(value.entityName()));
        out += text;
        break;
      }
      case Type::text:
        if (style == Style::readable) {
          appendEscaped(out, value.text());
        } else {
          out += value.text();
        }
        break;
      case Type::function:
        out += printedFunction(*value.function());
        break;
      case Type::opaque:
        out += value.opaque()->print();
        break;
      case Type::cons:
        break;
    }
  }

  void print(const Value& value) {
    std::vector<const Value*> open;
    const Value* at = &value;
    for (;;) {
      if (at->isCons()) {
        out += L'(';
        open.push_back(at);
        at = &car(*at);
        continue;
      }
      atom(*at);
      at = next(open);
      if (!at) return;
    }
  }

  // Behind a printed element: closes what ends, and gives the element that comes next.
  const Value* next(std::vector<const Value*>& open) {
    while (!open.empty()) {
      const Value& rest = cdr(*open.back());
      if (rest.isCons()) {
        out += L' ';
        open.back() = &rest;
        return &car(rest);
      }
      if (rest.isTrue()) {
        out += L" . ";
        atom(rest);
      }
      out += L')';
      open.pop_back();
    }
    return nullptr;
  }
};

}  // namespace

std::wstring printed(const Value& value, Style style) {
  Printer printer{{}, style};
  printer.print(value);
  return std::move(printer.out);
}

std::wstring printedReal(double value) {
  if (std::isnan(value)) return L"nan";
  if (std::isinf(value)) return value > 0 ? L"inf" : L"-inf";
  char text[32];
  std::string digits(text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6).ptr);
  if (digits.find('.') == std::string::npos) {
    const size_t exponent = digits.find('e');
    digits.insert(exponent == std::string::npos ? digits.size() : exponent, ".0");
  }
  return fromUtf8(digits);
}

}  // namespace lisp
