// Reads the groups of an RTF text, token by token. For use in this folder only.

#pragma once

#include <QStringView>
#include <QTextDocument>
#include <QVariantMap>
#include <algorithm>
#include <optional>
#include <set>
#include <vector>

#include "rtf/code_pages.h"
#include "rtf/control_words.h"
#include "rtf/document_builder.h"
#include "rtf/picture.h"
#include "rtf/rtf_reader.h"
#include "rtf/tables.h"
#include "rtf/tokens.h"

namespace qbx {

inline constexpr int kDefaultTabTwips = 720;

/// Sets the distance of tab stops in paragraphs that set none.
void SetTabDistance(QTextDocument& document, int twips);

/// Reads one text into one document.
class GroupReader {
 public:
  GroupReader(QStringView rtf, QTextDocument& document)
      : tokens_(rtf), document_(document), builder_(document, fonts_, colours_, lists_) {}

  RtfLosses Read();

 private:
  /// The state that holds in a group; the end of the group restores the outer one.
  struct State {
    RtfDestination destination = RtfDestination::Text;
    RtfCharacter character = {};
    RtfParagraph paragraph = {};
    RtfShape shape = {};
    int unicodeSkip = 1;
    bool opensTextBox = false;
    bool opensShape = false;
  };

  void OpenGroup();
  void CloseGroup();
  void EndDestination(const State& inner);
  void TakeToken(const RtfToken& token);
  void TakeText(QStringView text);
  void TakeBytes();
  void Show(QStringView text);
  [[nodiscard]] int CodePage() const;
  void TellTable(const RtfToken& token);

  void Act(InsertCharacter insert) { Show(QStringView(&insert.unit, 1)); }
  void Act(SetFlag set) { state_.character.*set.flag = set.on && (!token_.hasNumber || token_.number != 0); }
  void Act(SetCharacter set) { state_.character.*set.member = set.value; }
  void Act(CharacterNumber set);
  void Act(SetParagraph set) { state_.paragraph.*set.member = set.value; }
  void Act(ParagraphNumber set) { state_.paragraph.*set.member = std::clamp(token_.number, -set.most, set.most); }
  void Act(ShapeEdge edge) { state_.shape.*edge.member = std::clamp(token_.number, -kMaxTwips, kMaxTwips); }
  void Act(PageWord) { pageWords_[token_.text.toString()] = token_.number; }
  void Act(RtfDestination destination);
  void Act(RtfCommand command);
  void ActOnLetter(RtfCommand command);
  void AddTab();
  void AddUnicode();

  RtfTokens tokens_;
  RtfToken token_;
  QTextDocument& document_;
  RtfFonts fonts_;
  RtfColours colours_;
  RtfLists lists_;
  CodePages codePages_;
  DocumentBuilder builder_;
  std::optional<RtfPicture> picture_;
  State state_;
  std::vector<State> outer_;
  qsizetype tooDeep_ = 0;    ///< number of open groups that are skipped as too deep
  int skip_ = 0;             ///< characters to skip after \u
  bool star_ = false;        ///< whether an unknown next word may be skipped with its group
  QByteArray bytes_;         ///< bytes of text that are not decoded yet
  QString collected_;        ///< text of a field code or of the name of a shape's property
  bool shapeShown_ = false;  ///< whether the shape is a picture that is shown
  int codePage_ = 1252;
  int defaultFont_ = 0;
  int defaultTab_ = kDefaultTabTwips;
  QVariantMap pageWords_;
  std::set<QString> losses_;
};

}  // namespace qbx
