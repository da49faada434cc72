#pragma once
// The classic BASIC runtime functions the program's texts and numbers depend on:
// Val, IsNumeric, CDbl, CInt, CLng, CBool, Fix, Int, Str, CStr, Format and the
// string helpers. Engineers compare our digits with other tools, so these follow
// the classic behaviour exactly; everything else in the program calls them.

#include <concepts>
#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>

namespace tarvenix::basic {

// Leading-number parse: blanks, tabs and line feeds anywhere are skipped; an
// optional sign, digits, a point, digits and an exponent (E or D) are read up to
// the first other character; "&H" and "&O" prefixes read hexadecimal and octal
// (up to 16 bits as Integer, so "&HFFFF" is -1, up to 32 bits as Long). No
// number gives 0. A result too large for a double raises error 6 (Overflow).
double Val(std::string_view s);

// True when the whole text, blanks around it allowed, is one number: an optional
// sign, digits with at most one point, an optional exponent, or a "&H"/"&O"
// number. Thousands separators, currency signs and parentheses are not numbers
// here. An empty text is not numeric.
bool IsNumeric(std::string_view s);

// The value of a text that IsNumeric accepts; anything else raises error 13.
double CDbl(std::string_view s);

// Conversion to 16-bit/32-bit whole numbers: round to nearest, halves to even
// (2.5 -> 2, 3.5 -> 4); out of range or not a number raises error 6.
int16_t CInt(double v);
int32_t CLng(double v);

// "True"/"False" in any case, or a number (non-zero is true); else error 13.
bool CBool(std::string_view s);
// The text of a boolean: "True" or "False".
std::string BoolText(bool b);

double Fix(double v);  // truncation toward zero
double Int(double v);  // largest whole number not above v

// The plain text form of a number (CStr): 15 significant digits for a double,
// 7 for a single, no blank for the sign, "0.5", "1E-05", "1.23456789012346E+15".
std::string CStr(double v);
std::string CStr(float v);
template <std::integral T>
std::string CStr(T v) {
  return std::to_string(static_cast<long long>(v));
}

// The numeric print form (Str): a blank in the sign's place for values >= 0, and
// no zero before the point of a fraction (" .5", "-.25", " 12").
std::string Str(double v);
std::string Str(float v);
template <std::integral T>
std::string Str(T v) {
  return v < 0 ? CStr(v) : " " + CStr(v);
}

// Format with a digit pattern such as "0.##", "0", "000" or "0.0000": halves
// round away from zero on the number's decimal form (15 significant digits for a
// double, 7 for a single); the point stays even when no decimals follow ("2.").
std::string Format(double v, std::string_view pattern);
std::string Format(float v, std::string_view pattern);

// Floating-point arithmetic that fails as the classic runtime does instead of
// giving infinities or NaNs: Log of a number <= 0, Sqr of a negative number and
// a negative base to a fractional power (or zero to a negative one) are error 5;
// division by zero is error 11 (0/0 is error 6); a result beyond the double
// range is error 6. CSng stores a value in single precision (error 6 beyond its
// range); Checked raises error 6 for a value that is not finite.
double Log(double v);
double Exp(double v);
double Sqr(double v);
double Power(double base, double exponent);
double Divide(double a, double b);
double Checked(double v);
float CSng(double v);

// Dates. FormatDate understands d, dd, m, mm, mmm, mmmm, yy, yyyy and copies any
// other character: "mmm. d, yyyy" gives "Mar. 5, 2026". GeneralDate is the
// general date form "3/5/2026 2:07:09 PM" (the time is left out at midnight).
std::string FormatDate(const std::tm& t, std::string_view pattern);
std::string GeneralDate(const std::tm& t);
std::tm Now();  // local time

// String helpers with the classic argument rules: a negative length raises
// error 5 (Invalid procedure call or argument).
std::string Left(std::string_view s, long long n);
std::string Right(std::string_view s, long long n);
std::string Mid(std::string_view s, long long start1);  // to the end
std::string Mid(std::string_view s, long long start1, long long n);
std::string Trim(std::string_view s);   // blanks only, as the classic Trim
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);
std::string UCase(std::string_view s);  // ASCII letters
std::string LCase(std::string_view s);

}  // namespace tarvenix::basic
