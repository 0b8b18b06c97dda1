#pragma once

class QSqlDatabase;
class QSqlError;

/// The tables of an archive's index, and how those of earlier versions become them.
namespace IndexSchema {

/// What a program of this version writes; kept in the file as its user version.
constexpr int Version = 3;

enum class State
{
    Current,
    Newer, ///< made by a later version of the program
    Failed ///< the error tells why
};

/// Brings the tables to this version, one version after the other, each whole or not at all.
State migrate(QSqlDatabase& database, QSqlError* error);

/// Looks whether they are of this version, and changes nothing.
State check(QSqlDatabase& database, QSqlError* error);

} // namespace IndexSchema
