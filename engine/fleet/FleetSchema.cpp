#include "fleet/FleetSchema.h"

#include "fleet/DeskSchema.h"
#include "fleet/FleetDatabase.h"
#include "fleet/FleetFifth.h"
#include "fleet/FleetSecond.h"
#include "fleet/FleetSeventh.h"

namespace {

using State = FleetSchema::State;

constexpr const char* Roles = R"(
DO $$
DECLARE role_name text;
BEGIN
    FOREACH role_name IN ARRAY ARRAY['panedeck_viewer', 'panedeck_operator', 'panedeck_recorder'] LOOP
        IF NOT EXISTS (SELECT 1 FROM pg_roles WHERE rolname = role_name) THEN
            EXECUTE format('CREATE ROLE %I NOLOGIN', role_name);
        END IF;
    END LOOP;
END $$)";

constexpr const char* Tables[] = {
    "CREATE TABLE schema_version (version integer NOT NULL)",
    "CREATE TABLE recorder (id uuid PRIMARY KEY, name text NOT NULL UNIQUE, site text NOT NULL DEFAULT '', "
    "url text NOT NULL, alive_until timestamptz NOT NULL DEFAULT '-infinity')",
    "CREATE TABLE camera (id text PRIMARY KEY, name text NOT NULL UNIQUE DEFERRABLE INITIALLY DEFERRED, "
    "description jsonb NOT NULL DEFAULT '{}', "
    "enabled boolean NOT NULL DEFAULT true, site text NOT NULL DEFAULT '', "
    "recorder uuid REFERENCES recorder ON DELETE SET NULL)",
    // Who records a camera, as long as that one is alive; `previous` goes on until the new one is ready.
    "CREATE TABLE lease (camera text PRIMARY KEY REFERENCES camera ON DELETE CASCADE, recorder uuid "
    "REFERENCES "
    "recorder ON DELETE SET NULL, taken timestamptz, offered boolean NOT NULL DEFAULT false, previous uuid, "
    "ready "
    "boolean NOT NULL DEFAULT false)",
    "CREATE INDEX lease_recorder ON lease (recorder)",
    "CREATE TABLE spool (recorder uuid PRIMARY KEY REFERENCES recorder ON DELETE CASCADE, id uuid NOT NULL, "
    "last bigint NOT NULL DEFAULT 0, whole boolean NOT NULL DEFAULT false)",
    "CREATE TABLE segment (recorder uuid NOT NULL, path text NOT NULL, camera text NOT NULL, start_ms bigint "
    "NOT "
    "NULL, end_ms bigint NOT NULL, bytes bigint NOT NULL, sample boolean NOT NULL, spool uuid NOT NULL, "
    "CHECK (0 <= start_ms AND start_ms <= end_ms AND end_ms <= 100000000000000), PRIMARY "
    "KEY (recorder, path, start_ms)) PARTITION BY RANGE (start_ms)",
    "CREATE INDEX segment_time ON segment (camera, start_ms)",
    "CREATE INDEX segment_length ON segment (camera, (end_ms - start_ms))",
    "CREATE TABLE span (camera text NOT NULL, kind integer NOT NULL, start_ms bigint NOT NULL, end_ms bigint "
    "NOT "
    "NULL, sample boolean NOT NULL, acknowledged_by text, acknowledged_ms bigint, CHECK (kind IN (1, 2) AND "
    "0 <= start_ms AND start_ms <= end_ms AND end_ms <= 100000000000000), PRIMARY KEY (camera, kind, "
    "start_ms)) PARTITION BY RANGE (start_ms)",
    "CREATE INDEX span_length ON span (camera, (end_ms - start_ms))",
    "CREATE TABLE change (id bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY, kind text NOT NULL, camera "
    "text, "
    "at timestamptz NOT NULL DEFAULT clock_timestamp())",
    "CREATE INDEX change_at ON change (at)",
};

/// Months are those of UTC. The lock keeps two from making the same one.
constexpr const char* Months[] = {
    R"(
CREATE FUNCTION month_name(ms bigint) RETURNS text LANGUAGE sql IMMUTABLE AS $$
    SELECT to_char(to_timestamp(ms / 1000) AT TIME ZONE 'UTC', '"_"YYYY_MM') $$)",
    R"(
CREATE FUNCTION ensure_month(ms bigint) RETURNS void LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
DECLARE
    month timestamp := date_trunc('month', to_timestamp(ms / 1000) AT TIME ZONE 'UTC');
    first_ms bigint := extract(epoch FROM month)::bigint * 1000;
    last_ms bigint := extract(epoch FROM month + interval '1 month')::bigint * 1000;
    parent text;
BEGIN
    IF to_regclass('segment' || month_name(ms)) IS NOT NULL AND to_regclass('span' || month_name(ms)) IS NOT NULL THEN
        RETURN;
    END IF;
    PERFORM pg_advisory_xact_lock(hashtext('panedeck month'));
    FOREACH parent IN ARRAY ARRAY['segment', 'span'] LOOP
        EXECUTE format('CREATE TABLE IF NOT EXISTS %I PARTITION OF %I FOR VALUES FROM (%s) TO (%s)',
                       parent || month_name(ms), parent, first_ms, last_ms);
    END LOOP;
END $$)",
    R"(
CREATE FUNCTION drop_months(before_ms bigint) RETURNS integer LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
DECLARE
    dropped integer := 0;
    child record;
BEGIN
    FOR child IN SELECT c.relname, p.relname AS parent FROM pg_inherits i JOIN pg_class c ON c.oid = i.inhrelid
                 JOIN pg_class p ON p.oid = i.inhparent
                 WHERE p.oid IN ('segment'::regclass, 'span'::regclass) LOOP
        IF child.relname < child.parent || month_name(before_ms) THEN
            EXECUTE format('DROP TABLE %I', child.relname);
            dropped := dropped + 1;
        END IF;
    END LOOP;
    RETURN dropped;
END $$)",
};

/// The lock makes numbers and commits come in one order, so that who goes on from a number misses nothing.
constexpr const char* Changes[] = {
    R"(
CREATE FUNCTION tell_change(p_kind text, p_cameras text[]) RETURNS void LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
BEGIN
    IF cardinality(p_cameras) IS NULL OR cardinality(p_cameras) = 0 THEN
        RETURN;
    END IF;
    PERFORM pg_advisory_xact_lock(hashtext('panedeck change'));
    INSERT INTO change (kind, camera) SELECT p_kind, unnest(p_cameras);
    PERFORM pg_notify('panedeck_change', p_kind);
END $$)",
    R"(
CREATE FUNCTION tell_camera() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    PERFORM tell_change('camera', ARRAY(SELECT DISTINCT id FROM changed));
    RETURN NULL;
END $$)",
    R"(
CREATE FUNCTION lease_camera() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
BEGIN
    INSERT INTO lease (camera) VALUES (NEW.id) ON CONFLICT DO NOTHING;
    RETURN NULL;
END $$)",
    "CREATE TRIGGER camera_lease AFTER INSERT ON camera FOR EACH ROW EXECUTE FUNCTION lease_camera()",
    "CREATE TRIGGER camera_new AFTER INSERT ON camera REFERENCING NEW TABLE AS changed FOR EACH STATEMENT "
    "EXECUTE "
    "FUNCTION tell_camera()",
    "CREATE TRIGGER camera_other AFTER UPDATE ON camera REFERENCING NEW TABLE AS changed FOR EACH STATEMENT "
    "EXECUTE FUNCTION tell_camera()",
    "CREATE TRIGGER camera_gone AFTER DELETE ON camera REFERENCING OLD TABLE AS changed FOR EACH STATEMENT "
    "EXECUTE "
    "FUNCTION tell_camera()",
};

constexpr const char* Rows = R"(
CREATE FUNCTION delivered_rows(p_rows jsonb, p_known bigint) RETURNS TABLE (seq bigint, what integer, gone boolean, path text,
    camera text, kind integer, start_ms bigint, end_ms bigint, bytes bigint, sample boolean) LANGUAGE sql IMMUTABLE AS $$
    SELECT * FROM jsonb_to_recordset(p_rows) AS r (seq bigint, what integer, gone boolean, path text, camera text,
        kind integer, start_ms bigint, end_ms bigint, bytes bigint, sample boolean) WHERE r.seq > p_known $$)";

/// Takes a recorder's rows, each once: those up to the last number that it is known to have delivered are
/// passed over. A spool that is new begins anew, and what the one before it told goes when the new one has
/// told all. Gives the last number that is known now.
constexpr const char* Deliver = R"(
CREATE FUNCTION deliver(p_recorder uuid, p_spool uuid, p_rows jsonb) RETURNS bigint LANGUAGE plpgsql AS $$
#variable_conflict use_column
DECLARE
    known bigint;
    touched text[];
    marked text[];
BEGIN
    INSERT INTO spool (recorder, id) VALUES (p_recorder, p_spool) ON CONFLICT (recorder) DO UPDATE
        SET last = CASE WHEN spool.id = p_spool THEN spool.last ELSE 0 END,
            whole = spool.id = p_spool AND spool.whole, id = p_spool
        RETURNING last INTO known;
    PERFORM ensure_month(m.first) FROM (SELECT min(start_ms) AS first FROM delivered_rows(p_rows, known) WHERE what IN (1, 2) AND NOT gone
        GROUP BY month_name(start_ms)) m;
    DELETE FROM segment s USING delivered_rows(p_rows, known) d WHERE d.what = 1 AND d.gone AND s.recorder = p_recorder AND
        s.path = d.path AND s.start_ms = d.start_ms;
    DELETE FROM span s USING delivered_rows(p_rows, known) d WHERE d.what = 2 AND d.gone AND s.camera = d.camera AND s.kind = d.kind AND
        s.start_ms = d.start_ms;
    INSERT INTO segment SELECT p_recorder, path, camera, start_ms, end_ms, bytes, sample, p_spool FROM delivered_rows(p_rows, known)
        WHERE what = 1 AND NOT gone ON CONFLICT (recorder, path, start_ms) DO UPDATE SET camera = EXCLUDED.camera,
        end_ms = EXCLUDED.end_ms, bytes = EXCLUDED.bytes, sample = EXCLUDED.sample, spool = EXCLUDED.spool;
    INSERT INTO span SELECT camera, kind, start_ms, end_ms, sample FROM delivered_rows(p_rows, known) WHERE what = 2 AND NOT gone
        ON CONFLICT (camera, kind, start_ms) DO UPDATE SET end_ms = greatest(span.end_ms, EXCLUDED.end_ms),
        sample = EXCLUDED.sample;
    IF EXISTS (SELECT 1 FROM delivered_rows(p_rows, known) WHERE what = 3) THEN
        DELETE FROM segment WHERE recorder = p_recorder AND spool <> p_spool AND
            NOT (SELECT whole FROM spool WHERE recorder = p_recorder);
        UPDATE spool SET whole = true WHERE recorder = p_recorder;
    END IF;
    SELECT array_agg(DISTINCT camera) INTO touched FROM delivered_rows(p_rows, known) WHERE what = 1;
    PERFORM tell_change('segment', touched);
    SELECT array_agg(DISTINCT camera) INTO marked FROM delivered_rows(p_rows, known) WHERE what = 2;
    PERFORM tell_change('span', marked);
    SELECT greatest(known, coalesce(max(seq), 0)) INTO known FROM delivered_rows(p_rows, known);
    UPDATE spool SET last = known WHERE recorder = p_recorder;
    RETURN known;
END $$)";

constexpr const char* Acknowledge = R"(
CREATE FUNCTION acknowledge(p_camera text, p_start bigint) RETURNS void LANGUAGE plpgsql AS $$
BEGIN
    UPDATE span SET acknowledged_by = session_user, acknowledged_ms = extract(epoch FROM clock_timestamp()) * 1000
        WHERE camera = p_camera AND start_ms = p_start AND acknowledged_by IS NULL;
    IF FOUND THEN
        PERFORM tell_change('span', ARRAY[p_camera]);
    END IF;
END $$)";

constexpr const char* Rights[] = {
    "GRANT SELECT ON schema_version, recorder, camera, lease, segment, span, change TO "
    "panedeck_viewer",
    "GRANT panedeck_viewer TO panedeck_operator, panedeck_recorder",
    "GRANT INSERT, UPDATE, DELETE ON camera TO panedeck_operator",
    "GRANT UPDATE (acknowledged_by, acknowledged_ms) ON span TO panedeck_operator",
    "GRANT INSERT, UPDATE ON recorder TO panedeck_recorder",
    "GRANT SELECT, UPDATE ON lease TO panedeck_recorder",
    "GRANT SELECT, INSERT, UPDATE ON spool TO panedeck_recorder",
    "GRANT INSERT, UPDATE, DELETE ON segment, span TO panedeck_recorder",
    "GRANT DELETE ON change TO panedeck_recorder",
    "REVOKE EXECUTE ON FUNCTION ensure_month(bigint), drop_months(bigint), deliver(uuid, uuid, jsonb), "
    "tell_change(text, text[]) FROM PUBLIC",
    "GRANT EXECUTE ON FUNCTION ensure_month(bigint), deliver(uuid, uuid, jsonb), "
    "tell_change(text, text[]) TO panedeck_recorder",
    "GRANT EXECUTE ON FUNCTION tell_change(text, text[]) TO panedeck_operator",
    "INSERT INTO schema_version VALUES (1)",
};

/// When many cameras were recorded is read from an index alone.
constexpr const char* Times[] = {
    "DROP INDEX segment_time",
    "CREATE INDEX segment_time ON segment (camera, start_ms) INCLUDE (end_ms, recorder)",
    "UPDATE schema_version SET version = 4",
};

/// Where desks have the live pictures of what a recorder records, if not from the cameras themselves.
constexpr const char* Live[] = {
    "ALTER TABLE recorder ADD COLUMN live text NOT NULL DEFAULT ''",
    "UPDATE schema_version SET version = 6",
};

/// Functions that run with their owner's rights keep the path of this moment. Nobody's temporary tables come
/// before the real ones in it.
constexpr const char* SafePath =
    "SELECT set_config('search_path', quote_ident(current_schema()) || ', pg_temp', true)";

/// 0 if there are no tables, -1 if it can't be told.
int versionOf(FleetDatabase& database)
{
    QSqlQuery query = database.query();
    if (!database.run(query, "SELECT to_regclass('schema_version') IS NOT NULL") || !query.next())
        return -1;
    if (!query.value(0).toBool())
        return 0;
    return database.run(query, "SELECT max(version) FROM schema_version") && query.next()
               ? query.value(0).toInt()
               : -1;
}

bool makeFirst(FleetDatabase& database)
{
    return database.run(Roles) && database.runAll(Tables) && database.runAll(Months) &&
           database.runAll(Changes) && database.run(Rows) && database.run(Deliver) &&
           database.run(Acknowledge) && database.runAll(Rights);
}

bool makeAll(FleetDatabase& database)
{
    const int version = versionOf(database);
    return version >= 0 && database.run(SafePath) && (version >= 1 || makeFirst(database)) &&
           (version >= 2 || makeSecond(database)) && (version >= 3 || DeskSchema::make(database)) &&
           (version >= 4 || database.runAll(Times)) && (version >= 5 || makeFifth(database)) &&
           (version >= 6 || database.runAll(Live)) && (version >= 7 || makeSeventh(database));
}

} // namespace

State FleetSchema::check(FleetDatabase& database)
{
    const int version = versionOf(database);
    if (version < 0)
        return State::Failed;
    return version > Version ? State::Newer : version < Version ? State::Older : State::Current;
}

State FleetSchema::migrate(FleetDatabase& database)
{
    // Two that begin at once: the second one finds all done.
    if (!database.run("BEGIN") || !database.run("SELECT pg_advisory_xact_lock(hashtext('panedeck schema'))"))
        return State::Failed;
    State state = check(database);
    if (state == State::Older)
        state = makeAll(database) ? State::Current : State::Failed;
    if (state == State::Current && database.run("COMMIT"))
        return state;
    database.rollBack();
    return state == State::Newer ? state : State::Failed;
}
