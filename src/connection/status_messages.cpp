#include "connection/status_messages.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <larkmoor/error.h>

namespace larkmoor {
namespace {

constexpr std::string_view BlankLine = "\r\n\r\n";

struct StatusMessage {
  Status status;
  std::string_view title;
  std::string_view lines;
};

// Clients show these words and search for them: they stay as they are, misspellings included.
constexpr StatusMessage StatusMessages[] = {
    {2, ": I/O Error",
     "An error occurred during a disk read or write\r\n"
     "due to a damaged file, hardware error, or\r\n"
     "system error.  A status 2 error can also be the\r\n"
     "result of a poor network connection or improper\r\n"
     "network configuration.  Repeated status 2s on\r\n"
     "the same file indicate that the file is probably\r\n"
     "severely damaged and should be restored from the\r\n"
     "current backup."},
    {3, ": File Not Opened",
     "A file must be opened before any Btrieve\r\n"
     "operation can be performed on it."},
    {4, ": Key Value Not Found",
     "The value in the Key Buffer was not in the index\r\n"
     "specified by the Key Number on a search operation."},
    {5, ": Duplicate Key Value",
     "An attempt was made to insert a record with a key field\r\n"
     "containing a duplicate key value to an index that does\r\n"
     "not allow duplicate values."},
    {6, ": Invalid Key Number",
     "The value stored in the Key Number parameter\r\n"
     "was not valid for the file being accessed.\r\n"
     "The Key Number must be in the range of 0 to\r\n"
     "(n-1), where n is the number of key index\r\n"
     "paths including indexes."},
    {7, ": Different Key Number",
     "A Get Next or Get Previous operation attempted\r\n"
     "to retrieve a record using a key path other than\r\n"
     "the key path on which positioning was established.\r\n"
     "To switch key paths, use the Get Position operation\r\n"
     "followed by a Get Direct operation specifying the\r\n"
     "new key path."},
    {8, ": Invalid Positioning",
     "An attempt was made to update or delete a record\r\n"
     "when positioning was not properly established."},
    {9, ": End Of File",
     "An attempt was made to read past the end or\r\n"
     "beginning of a file."},
    {10, ": Modifiable Key Value Error",
     "An update operation was attempted that would\r\n"
     "change a non-modifiable key."},
    {11, ": Invalid File Name",
     "An illegal file name was specified that the\r\n"
     "operating system did not accept.\r\n\r\n"
     "Make sure the company path is valid."},
    {12, ": File not found", "The file name specified does not exist."},
    {13, ": Extended File Error",
     "Btrieve was unable to find the extension file for an\r\n"
     "extended file.  The name of an extension file is stored\r\n"
     "in the File Control Record.  If the extension file is\r\n"
     "moved or renamed, an Extended File Error will result."},
    {14, ": Pre-Image Open Error",
     "The pre-image file could not be created or\r\n"
     "opened for one of the following reasons:\r\n"
     "   o The disk was full.\r\n"
     "   o The pre-image file was erased,\r\n"
     "     renamed, or damaged.\r\n"
     "   o The user did not have proper access\r\n"
     "     access rights to the pre-image file."},
    {15, ": Pre-Image I/O Error",
     "An I/O error occurred during the pre-imaging function.\r\n"
     "This is caused by a full disk or a damaged pre-iamge file."},
    {22, ": Data Buffer Length",
     "The Data Buffer parameter was not long enough to accomodate\r\n"
     "the fixed record length of the file.  For variable-length records,\r\n"
     "a status 22 indicates that the retrieved record was larger than\r\n"
     "the Data Buffer, and only a portion of the record was returned\r\n"
     "(as much as the Data Buffer Length parameter specified).\r\n"
     "--------------------------------------------------"
     "--------------------------------------------------\r\n"
     "Typically this error occurs because Peachtree has somehow\r\n"
     "written a journal record with the wrong length.  It ignores this\r\n"
     "error during normal operations, but the error can cause problems\r\n"
     "later, such as during closing."},
    {41, ": Operation Not Allowed",
     "This was probably caused by an attempt to close\r\n"
     "a file during a transaction."},
    {46, ": Access to File Denied",
     "An attempt was made to perform an update,\r\n"
     "delete, or insert operation on a file that\r\n"
     "was opened in Read-Only mode.  Otherwise,\r\n"
     "an attempt was made to update a file where\r\n"
     "the owner name was not specified."},
    {58, ": Compression Buffer Too Short",
     "An attempt was made to read or write a record that\r\n"
     "is longer than the value specified for the size of\r\n"
     "the compression buffer.  Reload Btrieve with a\r\n"
     "larger 'Maximum Compressed Record Size' option\r\n"
     "(/U for workstation Btrieve) that is at least as\r\n"
     "large as the largest record your application will\r\n"
     "access."},
    {80, ": Record Conflict",
     "A file modification operation was attempted to modify\r\n"
     "a record that was modified by another application since\r\n"
     "time the record was retrieved.  The record must be\r\n"
     "retrieved again before it can be modified."},
    {84, ": Record Locked",
     "An attempt was made to update or lock a record\r\n"
     "that was currently locked, or to lock a file that\r\n"
     "has locked records.  Continue to retry the operation\r\n"
     "until the record becomes unlocked."},
    {85, ": File Locked",
     "An attempt was made to use a No-Wait lock to\r\n"
     "update or lock a record in a file that is\r\n"
     "currently locked by another application.\r\n"
     "Continue to retry the operation until the file\r\n"
     "becomes unlocked."},
    {86, ": File Table full",
     "An attempt was made to open a file while Btrieve's\r\n"
     "internal file table was full.  Reload Btrieve with\r\n"
     "a larger 'Maximum Number of Open Files' option\r\n"
     "(/F parameter for workstation Btrieve) that is\r\n"
     "sufficient to handle all concurrently open files\r\n"
     "in the application."},
    {87, ": Handle table full",
     "An attempt was made to open a file while Btrieve's\r\n"
     "internal file handle table was full.  Reload\r\n"
     "Btrieve with a larger 'Maximum Number of File\r\n"
     "Handles' option."},
    {88, ": Incompatible Mode Error",
     "An attempt was made to open a file while another\r\n"
     "application had the same file open in an\r\n"
     "incompatible mode."},
    {94, ": Permission Error",
     "An attempt was made to open a file in Read-Write\r\n"
     "mode (Key Number = 0) or create or update a file\r\n"
     "in a directory where 'Write' access rights are not\r\n"
     "granted."},
};

}  // namespace

std::string BtrieveErrorText(Status status) {
  std::string text = "Btrieve error " + std::to_string(status);
  const auto* message = std::ranges::find(StatusMessages, status, &StatusMessage::status);
  if (message != std::end(StatusMessages)) {
    text.append(message->title).append(BlankLine).append(message->lines);
  }
  return text;
}

void RaiseBtrieveError(std::int32_t number, std::string_view source, Status status) {
  std::string description(source);
  description.append(BlankLine).append(BtrieveErrorText(status));
  throw Error(number, "Tovrin", std::move(description), status);
}

}  // namespace larkmoor
