#include "reports/definition_xml.h"

#include <libxml/parser.h>
#include <libxml/relaxng.h>
#include <libxml/xmlerror.h>

#include <QFile>

#include "reports/report_error.h"

namespace qbx {

namespace {

QString FromXml(const xmlChar* text) {
  return QString::fromUtf8(reinterpret_cast<const char*>(text));
}

const xmlChar* ToXml(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

bool IsText(const xmlNode* node) {
  return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

/// The first fault that the parser or the schema reported.
struct FirstFault {
  QString text;
  int line = 0;
};

void KeepFirst(void* kept, xmlErrorPtr error) {
  auto& fault = *static_cast<FirstFault*>(kept);
  if (!fault.text.isEmpty()) return;
  fault.text = QString::fromUtf8(error->message).trimmed();
  fault.line = error->line;
}

/// The schema, compiled once.
const xmlRelaxNG& Schema() {
  static const auto schema = [] {
    QFile file(QStringLiteral(":/reports/report_definition.rng"));
    if (!file.open(QIODevice::ReadOnly)) qFatal("the schema of report definitions is missing from the program");
    const QByteArray bytes = file.readAll();
    xmlRelaxNGParserCtxt* context = xmlRelaxNGNewMemParserCtxt(bytes.constData(), static_cast<int>(bytes.size()));
    xmlRelaxNG* parsed = xmlRelaxNGParse(context);
    xmlRelaxNGFreeParserCtxt(context);
    if (parsed == nullptr) qFatal("the schema of report definitions is damaged");
    return std::unique_ptr<xmlRelaxNG, decltype(&xmlRelaxNGFree)>(parsed, &xmlRelaxNGFree);
  }();
  return *schema;
}

void CheckAgainstSchema(xmlDoc* document, const QString& file) {
  FirstFault fault;
  const std::unique_ptr<xmlRelaxNGValidCtxt, decltype(&xmlRelaxNGFreeValidCtxt)> context(
      xmlRelaxNGNewValidCtxt(const_cast<xmlRelaxNG*>(&Schema())), &xmlRelaxNGFreeValidCtxt);
  xmlRelaxNGSetValidStructuredErrors(context.get(), &KeepFirst, &fault);
  if (xmlRelaxNGValidateDoc(context.get(), document) != 0) throw ReportError{fault.text, file, fault.line};
}

}  // namespace

QString XmlElement::Name() const {
  return FromXml(node_->name);
}

int XmlElement::Line() const {
  return static_cast<int>(xmlGetLineNo(node_));
}

bool XmlElement::Has(const char* attribute) const {
  return xmlHasProp(node_, ToXml(attribute)) != nullptr;
}

QString XmlElement::Attribute(const char* attribute) const {
  const std::unique_ptr<xmlChar, void (*)(void*)> value(xmlGetProp(node_, ToXml(attribute)), xmlFree);
  return value ? FromXml(value.get()) : QString();
}

QString XmlElement::Text() const {
  QString text;
  for (const xmlNode* child = node_->children; child != nullptr; child = child->next)
    if (IsText(child)) text += FromXml(child->content);
  return text;
}

std::vector<XmlElement> XmlElement::Children() const {
  std::vector<XmlElement> children;
  for (xmlNode* child = node_->children; child != nullptr; child = child->next)
    if (child->type == XML_ELEMENT_NODE) children.emplace_back(child);
  return children;
}

std::vector<XmlElement> XmlElement::Children(const char* name) const {
  std::vector<XmlElement> children = Children();
  std::erase_if(children, [name](const XmlElement& child) { return child.Name() != QLatin1String(name); });
  return children;
}

std::optional<XmlElement> XmlElement::Child(const char* name) const {
  const std::vector<XmlElement> children = Children(name);
  return children.empty() ? std::nullopt : std::optional(children.front());
}

std::vector<XmlPart> XmlElement::Parts() const {
  std::vector<XmlPart> parts;
  for (xmlNode* child = node_->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE) parts.push_back({{}, XmlElement(child)});
    if (IsText(child)) parts.push_back({FromXml(child->content), std::nullopt});
  }
  return parts;
}

DefinitionXml::DefinitionXml(const QByteArray& bytes, const QString& file) {
  const std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> context(xmlNewParserCtxt(), &xmlFreeParserCtxt);
  FirstFault fault;
  xmlSetStructuredErrorFunc(&fault, &KeepFirst);
  document_.reset(xmlCtxtReadMemory(context.get(), bytes.constData(), static_cast<int>(bytes.size()), nullptr, nullptr,
                                    XML_PARSE_NONET | XML_PARSE_BIG_LINES));
  xmlSetStructuredErrorFunc(nullptr, nullptr);
  if (!document_) throw ReportError{QStringLiteral("This is no XML: %1").arg(fault.text), file, fault.line};
  if (document_->intSubset != nullptr || document_->extSubset != nullptr)
    throw ReportError{QStringLiteral("A report definition must not have a document type."), file, 1};
  CheckAgainstSchema(document_.get(), file);
}

DefinitionXml::~DefinitionXml() = default;

XmlElement DefinitionXml::Root() const {
  return XmlElement(xmlDocGetRootElement(document_.get()));
}

void DefinitionXml::Free::operator()(xmlDoc* document) const {
  xmlFreeDoc(document);
}

}  // namespace qbx
