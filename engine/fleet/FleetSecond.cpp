#include "fleet/FleetSecond.h"

#include "fleet/FleetDatabase.h"

namespace {

/// Who can record what: a recorder that has failed with a camera rests from it, and one that is not well
/// takes none.
constexpr const char* Failures[] = {
    "ALTER TABLE recorder ADD well boolean NOT NULL DEFAULT true",
    "CREATE TABLE failure (camera text REFERENCES camera ON DELETE CASCADE, recorder uuid REFERENCES "
    "recorder ON DELETE CASCADE, times integer NOT NULL DEFAULT 1, rests_until timestamptz NOT NULL, PRIMARY "
    "KEY (camera, recorder))",
    "CREATE VIEW able AS SELECT camera.id AS camera, recorder.id AS recorder FROM camera JOIN recorder ON "
    "(camera.recorder IS NULL OR camera.recorder = recorder.id) AND (camera.site = '' OR camera.site = "
    "recorder.site) WHERE camera.enabled AND recorder.well AND recorder.alive_until > clock_timestamp() AND "
    "NOT EXISTS (SELECT 1 FROM failure WHERE failure.camera = camera.id AND failure.recorder = recorder.id "
    "AND failure.rests_until > clock_timestamp())",
    "GRANT SELECT ON able, failure TO panedeck_viewer",
    "GRANT INSERT, UPDATE, DELETE ON failure TO panedeck_recorder",
};

/// Gives cameras back that can't be recorded here, if another one can take them: to the one that records it
/// still, or else to anybody. Who gives it back rests from it, longer each time.
constexpr const char* GiveBack = R"(
CREATE FUNCTION give_back(p_recorder uuid, p_cameras text[]) RETURNS SETOF text LANGUAGE sql AS $$
    WITH gone AS (
        UPDATE lease SET previous = NULL, offered = false, ready = false, recorder = (SELECT able.recorder FROM able
            WHERE able.camera = lease.camera AND able.recorder = lease.previous AND able.recorder <> p_recorder)
        WHERE lease.recorder = p_recorder AND lease.camera = ANY(p_cameras) AND EXISTS (SELECT 1 FROM able
            WHERE able.camera = lease.camera AND able.recorder <> p_recorder)
        RETURNING camera)
    INSERT INTO failure (camera, recorder, rests_until)
        SELECT camera, p_recorder, clock_timestamp() + interval '1 minute' FROM gone
        ON CONFLICT (camera, recorder) DO UPDATE SET
            times = CASE WHEN failure.rests_until < clock_timestamp() - interval '1 hour' THEN 1
                         ELSE failure.times + 1 END,
            rests_until = clock_timestamp() + interval '1 minute' *
                CASE WHEN failure.rests_until < clock_timestamp() - interval '1 hour' THEN 1
                     ELSE 2 ^ least(failure.times, 4) END
        RETURNING camera $$)";

/// A new archive under a name that is known takes the place of the one before: its cameras, and the address
/// at which that one's recordings can't be read any more. They are known still, and come back with their
/// archive.
constexpr const char* Join = R"(
CREATE FUNCTION join_recorder(p_id uuid, p_name text, p_site text, p_url text) RETURNS void LANGUAGE plpgsql SECURITY DEFINER
    SET search_path FROM CURRENT AS $$
DECLARE
    former recorder;
BEGIN
    PERFORM pg_advisory_xact_lock(hashtext('panedeck recorder'));
    SELECT * INTO former FROM recorder WHERE name = p_name AND id <> p_id;
    IF former.alive_until > clock_timestamp() THEN
        RAISE EXCEPTION 'another recorder is called %', p_name;
    END IF;
    UPDATE recorder SET name = name || ' ' || left(id::text, 8), url = CASE WHEN url = p_url THEN '' ELSE url END
        WHERE id = former.id;
    INSERT INTO recorder (id, name, site, url) VALUES (p_id, p_name, p_site, p_url)
        ON CONFLICT (id) DO UPDATE SET name = EXCLUDED.name, site = EXCLUDED.site, url = EXCLUDED.url;
    UPDATE camera SET recorder = p_id WHERE recorder = former.id;
END $$)";

/// Of each kind of change of a camera the last one stays, with a new number: the table does not grow, and who
/// was away for however long misses nothing.
constexpr const char* Changes[] = {
    "SELECT pg_advisory_xact_lock(hashtext('panedeck change'))",
    "DELETE FROM change WHERE id NOT IN (SELECT max(id) FROM change GROUP BY kind, camera)",
    "CREATE UNIQUE INDEX change_what ON change (kind, camera)",
    "DROP INDEX change_at",
    "REVOKE DELETE ON change FROM panedeck_recorder",
    R"(
CREATE OR REPLACE FUNCTION tell_change(p_kind text, p_cameras text[]) RETURNS void LANGUAGE plpgsql SECURITY DEFINER
    SET search_path FROM CURRENT AS $$
BEGIN
    IF cardinality(p_cameras) IS NULL OR cardinality(p_cameras) = 0 THEN
        RETURN;
    END IF;
    PERFORM pg_advisory_xact_lock(hashtext('panedeck change'));
    INSERT INTO change (kind, camera) SELECT DISTINCT p_kind, unnest(p_cameras)
        ON CONFLICT (kind, camera) DO UPDATE SET id = DEFAULT, at = clock_timestamp();
    PERFORM pg_notify('panedeck_change', p_kind);
END $$)",
};

/// Months before the first one of which any archive still has a recording go as a whole, with all that was
/// seen in them. It waits for nobody: where a month is being read it goes the next time. An archive whose
/// place another one has taken tells all once more when it comes back.
constexpr const char* OldMonths = R"(
CREATE FUNCTION drop_old_months() RETURNS integer LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT
    SET lock_timeout = '500ms' AS $$
DECLARE
    month text;
    this_month text := month_name(extract(epoch FROM clock_timestamp())::bigint * 1000);
    is_kept boolean;
    dropped integer := 0;
BEGIN
    FOR month IN SELECT substr(c.relname, 8) FROM pg_inherits i JOIN pg_class c ON c.oid = i.inhrelid
                 WHERE i.inhparent = 'segment'::regclass ORDER BY 1 LOOP
        EXIT WHEN month >= this_month;
        EXECUTE format('LOCK TABLE %I IN SHARE MODE', 'segment' || month);
        EXECUTE format('SELECT EXISTS (SELECT 1 FROM %I s JOIN recorder r ON r.id = s.recorder WHERE r.url <> '''')',
                       'segment' || month) INTO is_kept;
        EXIT WHEN is_kept;
        dropped := dropped + drop_months(extract(epoch FROM
            (to_date(month, '"_"YYYY_MM') + interval '1 month') AT TIME ZONE 'UTC')::bigint * 1000);
    END LOOP;
    IF dropped > 0 THEN
        DELETE FROM spool USING recorder r WHERE r.id = spool.recorder AND r.url = '';
    END IF;
    RETURN dropped;
EXCEPTION WHEN lock_not_available OR deadlock_detected THEN
    RETURN 0;
END $$)";

constexpr const char* Rights[] = {
    "REVOKE INSERT ON recorder FROM panedeck_recorder",
    "REVOKE EXECUTE ON FUNCTION give_back(uuid, text[]), join_recorder(uuid, text, text, text), "
    "drop_old_months() FROM PUBLIC",
    "GRANT EXECUTE ON FUNCTION give_back(uuid, text[]), join_recorder(uuid, text, text, text), "
    "drop_old_months() TO panedeck_recorder",
    "UPDATE schema_version SET version = 2",
};

} // namespace

bool makeSecond(FleetDatabase& database)
{
    return database.runAll(Failures) && database.run(GiveBack) && database.run(Join) &&
           database.runAll(Changes) && database.run(OldMonths) && database.runAll(Rights);
}
