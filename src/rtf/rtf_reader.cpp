#include "rtf/rtf_reader.h"

#include <QTextFrame>
#include <algorithm>
#include <optional>
#include <set>
#include <vector>

#include "rtf/code_pages.h"
#include "rtf/control_words.h"
#include "rtf/document_builder.h"
#include "rtf/picture.h"
#include "rtf/tables.h"
#include "rtf/tokens.h"

namespace qbx {
namespace {

constexpr int kDefaultTabTwips = 720;
constexpr qsizetype kMaxCollected = 100;

void SetTabDistance(QTextDocument& document, int twips) {
  QTextOption option = document.defaultTextOption();
  option.setTabStopDistance(twips / kTwipsAPixel);
  document.setDefaultTextOption(option);
}

class RtfReader {
 public:
  RtfReader(QStringView rtf, QTextDocument& document)
      : tokens_(rtf), document_(document), builder_(document, fonts_, colours_, lists_) {}

  RtfLosses Read();

 private:
  /// What holds in a group and what its end restores.
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
  void TakeWord(const RtfToken& token);
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
  qsizetype tooDeep_ = 0;    ///< open groups that are passed over
  int skip_ = 0;             ///< characters to pass over behind \u
  bool star_ = false;        ///< the next word may be passed over with its group
  QByteArray bytes_;         ///< not decoded yet
  QString collected_;        ///< of a field code or the name of a shape's property
  bool shapeShown_ = false;  ///< the shape is a picture, which is shown
  int codePage_ = 1252;
  int defaultFont_ = 0;
  int defaultTab_ = kDefaultTabTwips;
  QVariantMap pageWords_;
  std::set<QString> losses_;
};

RtfLosses RtfReader::Read() {
  for (token_ = tokens_.Next(); token_.kind != RtfToken::Kind::End; token_ = tokens_.Next()) {
    if (token_.kind == RtfToken::Kind::Byte && tooDeep_ == 0) {
      if (skip_ > 0) {
        --skip_;
      } else {
        bytes_.append(static_cast<char>(token_.number));
      }
      continue;
    }
    if (!bytes_.isEmpty()) TakeBytes();
    if (token_.kind == RtfToken::Kind::GroupStart) {
      OpenGroup();
    } else if (token_.kind == RtfToken::Kind::GroupEnd) {
      if (tooDeep_ == 0 && outer_.size() <= 1) break;
      CloseGroup();
    } else if (tooDeep_ == 0) {
      TakeWord(token_);
    }
  }
  TakeBytes();
  builder_.Finish(state_.paragraph, state_.character);

  SetTabDistance(document_, defaultTab_);
  if (!pageWords_.isEmpty()) {
    QTextFrameFormat page = document_.rootFrame()->frameFormat();
    page.setProperty(kPageWords, pageWords_);
    document_.rootFrame()->setFrameFormat(page);
  }
  return {losses_.begin(), losses_.end()};
}

void RtfReader::OpenGroup() {
  skip_ = 0;
  star_ = false;
  if (tooDeep_ > 0 || static_cast<qsizetype>(outer_.size()) >= kMaxRtfDepth) {
    ++tooDeep_;
    return;
  }
  outer_.push_back(state_);
  state_.opensTextBox = false;
  state_.opensShape = false;
}

void RtfReader::CloseGroup() {
  skip_ = 0;
  star_ = false;
  if (tooDeep_ > 0) {
    --tooDeep_;
    return;
  }
  const State inner = std::move(state_);
  state_ = std::move(outer_.back());
  outer_.pop_back();
  if (inner.destination == RtfDestination::OldMarker) state_.paragraph.marker = inner.paragraph.marker;
  if (inner.opensTextBox) builder_.EndStarted(inner.paragraph, inner.character);
  if (inner.opensShape && !shapeShown_) losses_.insert(QString::fromLatin1(kRtfDrawings));
  if (inner.destination != state_.destination) EndDestination(inner);
}

void RtfReader::EndDestination(const State& inner) {
  if (inner.destination == RtfDestination::Picture && picture_) {
    picture_->FillShape(inner.shape.right - inner.shape.left, inner.shape.bottom - inner.shape.top);
    if (!picture_->IsEmpty()) builder_.AddPicture(*picture_);
    picture_.reset();
    shapeShown_ = true;
  }
  if (inner.destination == RtfDestination::FieldCode) {
    // A shape may stand in a field of its own, which says nothing.
    if (!collected_.trimmed().startsWith(u"SHAPE")) losses_.insert(u"fields and links"_qs);
    collected_.clear();
  }
}

void RtfReader::TakeWord(const RtfToken& token) {
  if (token.kind == RtfToken::Kind::Text) {
    TakeText(token.text);
    return;
  }
  if (token.kind == RtfToken::Kind::Binary) {
    if (state_.destination == RtfDestination::Picture && picture_) picture_->Binary(token.text);
    return;
  }
  skip_ = 0;
  if (state_.destination == RtfDestination::Skip) return;
  const bool starred = std::exchange(star_, false);
  const RtfWord* word = FindRtfWord(token.text);
  if (starred && !word) {
    state_.destination = RtfDestination::Skip;
    return;
  }
  const bool inText = state_.destination == RtfDestination::Text || state_.destination == RtfDestination::Quiet;
  const bool opensGroup = word && std::holds_alternative<RtfDestination>(word->action);
  const bool special = word && (std::holds_alternative<RtfCommand>(word->action) ||
                                std::holds_alternative<InsertCharacter>(word->action));
  if (!inText && !opensGroup && !special && state_.destination != RtfDestination::OldMarker) {
    TellTable(token);
    return;
  }
  if (!word) {
    TellTable(token);
    return;
  }
  if (word->loss && inText) losses_.insert(QString::fromLatin1(word->loss));
  std::visit([this](auto action) { Act(action); }, word->action);
}

void RtfReader::TellTable(const RtfToken& token) {
  switch (state_.destination) {
    case RtfDestination::FontTable:
      fonts_.Word(token.text, token.number);
      break;
    case RtfDestination::ColourTable:
      colours_.Word(token.text, token.number);
      break;
    case RtfDestination::ListTable:
      lists_.TableWord(token.text, token.number);
      break;
    case RtfDestination::ListOverrides:
      lists_.OverrideWord(token.text, token.number);
      break;
    case RtfDestination::Picture:
      if (picture_) picture_->Word(token.text, token.number, token.hasNumber);
      break;
    default:
      break;
  }
}

void RtfReader::TakeText(QStringView text) {
  const qsizetype passedOver = std::min<qsizetype>(skip_, text.size());
  skip_ -= static_cast<int>(passedOver);
  Show(text.sliced(passedOver));
}

void RtfReader::TakeBytes() {
  if (bytes_.isEmpty()) return;
  Show(codePages_.Decode(bytes_, CodePage()));
  bytes_.clear();
}

int RtfReader::CodePage() const {
  if (state_.destination == RtfDestination::LevelText) return 1252;
  const int font = state_.character.font < 0 ? defaultFont_ : state_.character.font;
  const int known = state_.destination == RtfDestination::FontTable ? fonts_.CodePage() : fonts_.Find(font).codePage;
  return known > 0 && (known != kSymbolCodePage || state_.destination == RtfDestination::Text) ? known : codePage_;
}

void RtfReader::Show(QStringView text) {
  switch (state_.destination) {
    case RtfDestination::Text:
      if (state_.character.hidden || state_.character.deleted) {
        losses_.insert(state_.character.hidden ? u"hidden text"_qs : u"tracked changes"_qs);
      } else {
        builder_.AddText(text, state_.character);
      }
      break;
    case RtfDestination::FontTable:
      fonts_.Text(text);
      break;
    case RtfDestination::ColourTable:
      colours_.Text(text);
      break;
    case RtfDestination::LevelText:
      lists_.LevelText(text);
      break;
    case RtfDestination::Picture:
      if (picture_) picture_->Hex(text);
      break;
    case RtfDestination::FieldCode:
    case RtfDestination::ShapeProperty:
      collected_ += text.first(std::clamp<qsizetype>(kMaxCollected - collected_.size(), 0, text.size()));
      break;
    default:
      break;
  }
}

void RtfReader::Act(CharacterNumber set) {
  state_.character.*set.member = token_.hasNumber ? std::clamp(token_.number, 0, set.most) : set.unsaid;
}

void RtfReader::Act(RtfDestination destination) {
  if (destination == RtfDestination::Picture && state_.destination != RtfDestination::Picture) picture_.emplace();
  if (destination == RtfDestination::ShapeProperty || destination == RtfDestination::FieldCode) collected_.clear();
  state_.destination = destination;
}

void RtfReader::Act(RtfCommand command) {
  switch (command) {
    case RtfCommand::Nothing:
      break;
    case RtfCommand::Star:
      star_ = true;
      break;
    case RtfCommand::Unicode:
      AddUnicode();
      break;
    case RtfCommand::UnicodeSkip:
      state_.unicodeSkip = std::clamp(token_.number, 0, 16);
      break;
    case RtfCommand::Plain:
      state_.character = {};
      break;
    case RtfCommand::ParagraphDefaults:
      state_.paragraph = {};
      break;
    case RtfCommand::TabStop:
      AddTab();
      break;
    default:
      if (state_.destination == RtfDestination::Text || state_.destination == RtfDestination::Quiet)
        ActOnLetter(command);
  }
}

void RtfReader::ActOnLetter(RtfCommand command) {
  const RtfParagraph& paragraph = state_.paragraph;
  const RtfCharacter& character = state_.character;
  switch (command) {
    case RtfCommand::Paragraph:
      if (state_.destination == RtfDestination::Text) builder_.EndParagraph(paragraph, character);
      break;
    case RtfCommand::Row:
      builder_.EndStarted(paragraph, character);
      break;
    case RtfCommand::Cell:
      builder_.EndCell();
      break;
    case RtfCommand::Page:
    case RtfCommand::Section:
      builder_.BreakPage(paragraph, character);
      break;
    case RtfCommand::SectionGoesOn:
      builder_.ForgetBreak();
      break;
    case RtfCommand::TextBox:
      builder_.EndStarted(paragraph, character);
      state_.destination = RtfDestination::Text;
      state_.opensTextBox = true;
      break;
    case RtfCommand::Shape:
      state_.destination = RtfDestination::Quiet;
      state_.opensShape = true;
      shapeShown_ = false;
      break;
    case RtfCommand::ShapeValue:
      if (collected_ != u"pib") state_.destination = RtfDestination::Skip;
      break;
    case RtfCommand::CodePage:
      codePage_ = token_.number;
      break;
    case RtfCommand::MacCodePage:
      codePage_ = 10000;
      break;
    case RtfCommand::PcCodePage:
      codePage_ = 437;
      break;
    case RtfCommand::DefaultFont:
      defaultFont_ = token_.number;
      builder_.SetDefaultFont(defaultFont_);
      break;
    case RtfCommand::DefaultTab:
      defaultTab_ = std::clamp(token_.number, 1, kMaxTwips);
      break;
    case RtfCommand::Columns:
      if (token_.number > 1) losses_.insert(u"columns"_qs);
      break;
    case RtfCommand::LetterSpacing:
      if (token_.number != 0) losses_.insert(u"letter spacing"_qs);
      break;
    default:
      break;
  }
}

void RtfReader::AddTab() {
  RtfParagraph& paragraph = state_.paragraph;
  if (paragraph.tabs.size() < kMaxTabs) {
    paragraph.tabs.append(QTextOption::Tab(std::clamp(token_.number, -kMaxTwips, kMaxTwips),
                                           static_cast<QTextOption::TabType>(paragraph.nextTab), u'.'));
  }
  paragraph.nextTab = QTextOption::LeftTab;
}

void RtfReader::AddUnicode() {
  const int code = token_.number < 0 ? token_.number + 0x10000 : token_.number;
  skip_ = state_.unicodeSkip;
  if (code <= 0 || code > 0x10FFFF) return;
  if (code < 0x10000) {
    const char16_t unit = static_cast<char16_t>(code);
    Show(QStringView(&unit, 1));
  } else {
    Show(QString::fromUcs4(reinterpret_cast<const char32_t*>(&code), 1));
  }
}

qsizetype RtfStart(const QString& text) {
  qsizetype start = 0;
  while (start < text.size() && (text[start].isSpace() || text[start] == QChar::ByteOrderMark))
    ++start;
  return QStringView(text).sliced(start).startsWith(u"{\\rtf", Qt::CaseInsensitive) ? start : -1;
}

}  // namespace

bool BeginsAsRtf(const QString& text) {
  return RtfStart(text) >= 0;
}

RtfLosses ReadRtf(const QString& text, QTextDocument& document) {
  const QStringView read = QStringView(text).first(std::min(text.size(), kMaxRtfCharacters));
  document.setUndoRedoEnabled(false);
  RtfLosses losses;
  if (const qsizetype start = RtfStart(text); start >= 0 && start < read.size()) {
    losses = RtfReader(read.sliced(start), document).Read();
  } else {
    document.setPlainText(read.toString());
    SetTabDistance(document, kDefaultTabTwips);
  }
  if (read.size() < text.size()) losses.prepend(u"everything behind the first 32 million characters"_qs);
  document.setUndoRedoEnabled(true);
  document.setModified(false);
  return losses;
}

}  // namespace qbx
