#include "ledger_text.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "engine/text.h"
#include "ledger.h"
#include "money.h"
#include "text_tools.h"
#include "value_text.h"

namespace larkmoor::cli {
namespace {

constexpr std::string_view Indent = "    ";
/// The account of what a transaction lacks.
constexpr std::string_view OutOfBalance = "Out of balance";
constexpr std::size_t AmountWidth = 14;
/// The empty date's own day stands for "no date", since each transaction has to have one; and for
/// dates ahead of the first year that ledger knows.
constexpr std::string_view NoDate = "1900-01-01";
constexpr std::string_view FirstYear = "1400";

/// The text with blanks in place of all other white space.
std::string WithBlanks(std::string_view text) {
  constexpr std::string_view Space = "\t\n\v\f\r";
  constexpr std::string_view HardBlank = "\u00A0";
  std::string blanked(text);
  for (char& c : blanked) {
    if (Space.find(c) != std::string_view::npos) c = ' ';
  }
  for (std::size_t at = 0; (at = blanked.find(HardBlank, at)) != std::string::npos;) {
    blanked.replace(at, HardBlank.size(), " ");
  }
  return blanked;
}

/// The text in one line without two blanks together, which end a name, and with other characters in
/// place of those that mean something there.
std::string Plain(std::string_view text, std::string_view special, std::string_view instead) {
  std::string plain;
  for (const char c : Printable(WithBlanks(text))) {
    const std::size_t at = special.find(c);
    const char shown = at == std::string_view::npos ? c : instead[at];
    if (shown != ' ' || !plain.ends_with(' ')) plain += shown;
  }
  return std::string(TrimBlanks(plain));
}

// A colon parts a name, a semicolon starts a comment, and a name in angle brackets is put off.
std::string NamePart(std::string_view text) { return Plain(text, ":;<>", ",,  "); }
std::string Payee(std::string_view text) { return Plain(text, ";|", ",/"); }
std::string Code(std::string_view text) { return Plain(text, ")", "]"); }
// A word with a colon is a tag, which may even set a date; so may brackets.
std::string Comment(std::string_view text) { return Plain(text, ":[]", "-()"); }

/// The kind of account, by which hledger makes its statements.
char StatementOf(std::int16_t type) {
  enum : std::int16_t { Cash = 0, LastAsset = 8, LastLiability = 14, LastEquity = 19, Income = 21 };
  if (type == Cash) return 'C';
  if (type <= LastAsset) return 'A';
  if (type <= LastLiability) return 'L';
  if (type <= LastEquity) return 'E';
  return type <= Income ? 'R' : 'X';
}

std::string JoinNonEmpty(std::string_view left, char between, std::string_view right) {
  std::string joined(left);
  if (!left.empty() && !right.empty()) joined += between;
  return joined.append(right);
}

/// "Cash:1010 Petty cash": the type, then the ID and the description.
std::string NameOf(const Account& account) {
  const std::string name = NamePart(JoinNonEmpty(account.id, ' ', account.description));
  return JoinNonEmpty(NamePart(account.TypeText()), ':', name);
}

std::string DayOf(const Date& date) {
  constexpr std::size_t DayLength = 10;  // a time of day may follow
  const std::string text = date.IsValid() ? TextOf(date).substr(0, DayLength) : "";
  return text < FirstYear ? std::string(NoDate) : text;
}

class LedgerText {
 public:
  explicit LedgerText(std::ostream& out) : out_(out), accounts_(ReadAccounts()) {
    for (const auto& [index, account] : accounts_) Name(index, account);
  }

  void Write(Output output) {
    out_ << "; The general ledger of a company, written by larkmoor.\n\n";
    WriteAccounts();
    LedgerWalk walk(output);
    while (walk.Next()) WriteEntry(walk.Entry());
    walk.ReportImbalances();
  }

 private:
  /// Keeps accounts apart whose names differ only in what cannot be written.
  const std::string& Name(std::int32_t index, const Account& account) {
    std::string name = NameOf(account);
    if (!taken_.insert(name).second) name += " (index " + std::to_string(index) + ")";
    width_ = std::max(width_, DisplayWidth(name));
    return names_[index] = name;
  }

  const std::string& NameOfIndex(std::int32_t index) {
    const auto found = names_.find(index);
    return found != names_.end() ? found->second : Name(index, AccountOf(accounts_, index));
  }

  /// In the order of their IDs, which hledger then keeps, that of types included.
  void WriteAccounts() {
    std::map<std::string, std::int32_t> byID;
    std::set<std::string> types;
    for (const auto& [index, account] : accounts_) byID[account.id] = index;
    for (const auto& [id, index] : byID) {
      const std::string type = NamePart(accounts_.at(index).TypeText());
      if (types.insert(type).second) out_ << "account " << type << '\n';
      out_ << "account " << names_.at(index) << '\n'
           << Indent << "; type: " << StatementOf(accounts_.at(index).type) << '\n';
    }
  }

  void WriteEntry(const LedgerEntry& entry) {
    if (entry.postings.empty()) return;
    out_ << '\n' << DayOf(entry.date) << " (" << Code(entry.number) << ')';
    const std::string payee = Payee(entry.name);
    if (!payee.empty()) out_ << ' ' << payee;
    out_ << '\n';
    for (const Posting& posting : entry.postings) {
      WritePosting(NameOfIndex(posting.account), posting.amount, Comment(posting.text));
    }
    const Currency total = entry.Total();
    if (total != Currency()) WritePosting(OutOfBalance, Difference(Currency(), total), {});
  }

  void WritePosting(std::string_view account, Currency amount, std::string_view comment) {
    const std::string money = MoneyText(amount);
    out_ << Indent << account << std::string(width_ - std::min(width_, DisplayWidth(account)), ' ')
         << "  " << std::string(AmountWidth - std::min(AmountWidth, money.size()), ' ') << money;
    if (!comment.empty()) out_ << "  ; " << comment;
    out_ << '\n';
  }

  std::ostream& out_;
  std::map<std::int32_t, Account> accounts_;
  std::map<std::int32_t, std::string> names_;
  std::set<std::string> taken_{std::string(OutOfBalance)};
  std::size_t width_ = OutOfBalance.size();
};

}  // namespace

void WriteLedgerText(std::ostream& out, Output output) { LedgerText(out).Write(output); }

}  // namespace larkmoor::cli
