// The XML of a definition, checked against its schema. Only these files use libxml2.

#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

struct _xmlDoc;   // NOLINT(bugprone-reserved-identifier): the name that libxml2 gives it
struct _xmlNode;  // NOLINT(bugprone-reserved-identifier)

namespace qbx {

struct XmlPart;

/// An element of the document; valid as long as the document lives.
class XmlElement {
 public:
  explicit XmlElement(_xmlNode* node) : node_(node) {}

  [[nodiscard]] QString Name() const;
  [[nodiscard]] int Line() const;
  [[nodiscard]] bool Has(const char* attribute) const;
  /// Empty when the attribute is missing.
  [[nodiscard]] QString Attribute(const char* attribute) const;
  /// The text in the element.
  [[nodiscard]] QString Text() const;
  [[nodiscard]] std::vector<XmlElement> Children() const;
  [[nodiscard]] std::vector<XmlElement> Children(const char* name) const;
  [[nodiscard]] std::optional<XmlElement> Child(const char* name) const;

  /// Texts and elements in their order.
  [[nodiscard]] std::vector<XmlPart> Parts() const;

 private:
  _xmlNode* node_;
};

/// A text or an element.
struct XmlPart {
  QString text;
  std::optional<XmlElement> element;
};

/// A parsed and valid definition.
class DefinitionXml {
 public:
  /// \throws ReportError with the line
  DefinitionXml(const QByteArray& bytes, const QString& file);
  ~DefinitionXml();
  DefinitionXml(const DefinitionXml&) = delete;
  DefinitionXml& operator=(const DefinitionXml&) = delete;

  [[nodiscard]] XmlElement Root() const;

 private:
  struct Free {
    void operator()(_xmlDoc* document) const;
  };
  std::unique_ptr<_xmlDoc, Free> document_;
};

}  // namespace qbx
