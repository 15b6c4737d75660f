// What each kind of control word does to a reading.

#include <algorithm>

#include "rtf/group_reader.h"

namespace qbx {

void GroupReader::Act(CharacterNumber set) {
  state_.character.*set.member = token_.hasNumber ? std::clamp(token_.number, 0, set.most) : set.unsaid;
}

void GroupReader::Act(RtfDestination destination) {
  if (destination == RtfDestination::Picture && state_.destination != RtfDestination::Picture) picture_.emplace();
  if (destination == RtfDestination::ShapeProperty || destination == RtfDestination::FieldCode) collected_.clear();
  state_.destination = destination;
}

void GroupReader::Act(RtfCommand command) {
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

void GroupReader::ActOnLetter(RtfCommand command) {
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
      if (token_.number > 1) losses_.insert(QStringLiteral("columns"));
      break;
    case RtfCommand::LetterSpacing:
      if (token_.number != 0) losses_.insert(QStringLiteral("letter spacing"));
      break;
    default:
      break;
  }
}

void GroupReader::AddTab() {
  RtfParagraph& paragraph = state_.paragraph;
  if (paragraph.tabs.size() < kMaxTabs) {
    paragraph.tabs.append(QTextOption::Tab(std::clamp(token_.number, -kMaxTwips, kMaxTwips),
                                           static_cast<QTextOption::TabType>(paragraph.nextTab), u'.'));
  }
  paragraph.nextTab = QTextOption::LeftTab;
}

void GroupReader::AddUnicode() {
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

}  // namespace qbx
