// Stored text values that are base64 encoded.

#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace qbx {

/// Marks a stored value whose rest is encoded by cBase64. The host may write one; nothing here reads or writes it yet.
inline constexpr char kBase64Marker[] = "b64!";

/// Base64 with the standard alphabet and "=" padding (RFC 4648), broken into lines of 76 characters by CR LF (RFC
/// 2045).
class cBase64 {
 public:
  /// Encodes a text (as UTF-8).
  [[nodiscard]] static QString BASE64_Encode(const QString& text);
  /// \return the text; nothing when the input is no valid base64 or not valid UTF-8 inside
  [[nodiscard]] static std::optional<QString> BASE64_Decode(const QString& encoded);

  /// Encodes bytes.
  [[nodiscard]] static QString BASE64_EncodeEx(const QByteArray& bytes);
  /// Line breaks, blanks and tabs in the input are skipped.
  /// \return the bytes; nothing when a character is foreign, padding is missing or misplaced, or unused bits are set
  [[nodiscard]] static std::optional<QByteArray> BASE64_DecodeEx(const QString& encoded);
};

/// The real value of a stored one: decoded when it begins with "b64!", otherwise unchanged.
/// A value that begins with "b64!/" is enciphered; its readers look for that marker before they call this.
/// \return nothing when the marker is there and the rest is no valid base64
[[nodiscard]] std::optional<QString> ReadBase64Value(const QString& stored);

/// A value in its stored, encoded form with the marker.
[[nodiscard]] QString MakeBase64Value(const QString& value);

}  // namespace qbx
