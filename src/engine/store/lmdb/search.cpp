#include "engine/store/lmdb/search.h"

namespace larkmoor::store::lmdb {

KeptCursor::~KeptCursor() {
  if (cursor_ != nullptr) mdb_cursor_close(cursor_);
}

Cursor::Cursor(KeptCursor& kept, const Reading& reading) : transaction_(reading.Transaction()) {
  if (reading.InBatch()) {
    kept.Leave();  // a dropped batch leaves the state that it stood in
    failure_ = mdb_cursor_open(reading.Transaction(), reading.Tree(), &cursor_);
    return;
  }
  kept_ = &kept;
  if (kept.cursor_ == nullptr) {
    failure_ = mdb_cursor_open(reading.Transaction(), reading.Tree(), &kept.cursor_);
    kept.stands_ = false;
  } else if (kept.state_ != reading.State() || reading.State() == UnknownState) {
    failure_ = mdb_cursor_renew(reading.Transaction(), kept.cursor_);
    kept.stands_ = false;
  }
  kept.state_ = reading.State();
  cursor_ = kept.cursor_;
}

Cursor::Cursor(const Reading& reading)
    : transaction_(reading.Transaction()),
      failure_(mdb_cursor_open(reading.Transaction(), reading.Tree(), &cursor_)) {}

Cursor::~Cursor() {
  if (kept_ == nullptr && failure_ == MDB_SUCCESS) mdb_cursor_close(cursor_);
}

void Cursor::Forget() {
  Stay(false);
  if (kept_ != nullptr && failure_ == MDB_SUCCESS) {
    failure_ = mdb_cursor_renew(transaction_, cursor_);
  }
}

int Cursor::Move(MDB_cursor_op operation) {
  return failure_ != MDB_SUCCESS ? failure_ : mdb_cursor_get(cursor_, &entry_, &value_, operation);
}

int Cursor::At(const EntryKey& key) {
  entry_ = key.Value();
  return Move(MDB_SET_KEY);
}

int Cursor::AtOrAbove(const EntryKey& key) {
  entry_ = key.Value();
  return Move(MDB_SET_RANGE);
}

int Cursor::Below(const EntryKey& key) {
  const int code = AtOrAbove(key);
  if (code == MDB_SUCCESS) return Move(MDB_PREV);
  return code == MDB_NOTFOUND ? Move(MDB_LAST) : code;
}

int Cursor::After(const EntryKey& key) {
  const int code = AtOrAbove(key);
  return code == MDB_SUCCESS && key == entry_ ? Move(MDB_NEXT) : code;
}

int SearchKey(Cursor& cursor, Seek seek, const KeyDescription& key,
              std::span<const std::byte> buffer) {
  const auto value = [&] { return EntryKey::OfKey(key.number, EncodeKeyBuffer(key, buffer)); };
  const auto behindValue = [&] {
    return EntryKey::OfKey(key.number, EncodeKeyBuffer(key, buffer), LastNumber);
  };
  int code = MDB_NOTFOUND;
  switch (seek) {
    case Seek::Equal: {
      const EntryKey wanted = value();
      code = cursor.AtOrAbove(wanted);
      if (code == MDB_SUCCESS && !wanted.Begins(cursor.Entry())) return MDB_NOTFOUND;
      return code;
    }
    case Seek::GreaterOrEqual:
      code = cursor.AtOrAbove(value());
      break;
    case Seek::Greater:
      code = cursor.AtOrAbove(behindValue());
      break;
    case Seek::Less:
      code = cursor.Below(value());
      break;
    case Seek::LessOrEqual:
      code = cursor.Below(behindValue());
      break;
    case Seek::First:
      code = cursor.AtOrAbove(EntryKey::BeforeKey(key.number));
      break;
    case Seek::Last:
      code = cursor.Below(EntryKey::BeforeKey(static_cast<std::int16_t>(key.number + 1)));
      break;
    case Seek::Next:
    case Seek::Previous:
      break;
  }
  if (code == MDB_SUCCESS && !IsOfKey(cursor.Entry(), key.number)) return MDB_NOTFOUND;
  return code;
}

}  // namespace larkmoor::store::lmdb
