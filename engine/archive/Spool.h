#pragma once

class QSqlDatabase;
class QSqlError;

/// What of an archive's index the shared index does not have yet. It lies in the archive's own index and is
/// kept by triggers there, so that a row and what is to be told of it come as a whole or not at all, whatever
/// happens to the program. Of a row that changes often only the last state waits.
namespace Spool {

/// Makes the triggers, if they are not there, and lets all that is known wait to be told.
bool arm(QSqlDatabase& index, QSqlError* error);
/// Notes that all files of the archive are known to the index by now: what an earlier spool has told and this
/// one has not is no longer there.
bool noteWhole(QSqlDatabase& index, QSqlError* error);
/// Begins anew, as if nothing had been told: a server may have lost what it was told last.
bool renew(QSqlDatabase& index, QSqlError* error);
/// Takes it all away where no shared index is told anything.
bool disarm(QSqlDatabase& index, QSqlError* error);

} // namespace Spool
