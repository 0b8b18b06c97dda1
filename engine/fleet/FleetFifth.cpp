#include "fleet/FleetFifth.h"

#include "fleet/FleetDatabase.h"

namespace {

/// Of several programs with one recorder's number, as that of a machine that was copied, one is it at a time:
/// who comes while another one lives is told until when that one does. A program that was killed lives for
/// some seconds by that, and says nothing new: then whoever saw so takes its place.
constexpr const char* Join[] = {
    "ALTER TABLE recorder ADD instance uuid",
    "DROP FUNCTION join_recorder(uuid, text, text, text)",
    R"(
CREATE FUNCTION join_recorder(p_id uuid, p_name text, p_site text, p_url text, p_instance uuid, p_silent bigint)
    RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
DECLARE
    former recorder;
    other bigint;
BEGIN
    PERFORM pg_advisory_xact_lock(hashtext('panedeck recorder'));
    SELECT extract(epoch FROM alive_until) * 1000000 INTO other FROM recorder
        WHERE id = p_id AND instance <> p_instance AND alive_until > clock_timestamp();
    IF other <> p_silent THEN
        RETURN other;
    END IF;
    SELECT * INTO former FROM recorder WHERE name = p_name AND id <> p_id;
    IF former.alive_until > clock_timestamp() THEN
        RAISE EXCEPTION 'another recorder is called %', p_name;
    END IF;
    UPDATE recorder SET name = name || ' ' || left(id::text, 8), url = CASE WHEN url = p_url THEN '' ELSE url END
        WHERE id = former.id;
    INSERT INTO recorder (id, name, site, url, instance) VALUES (p_id, p_name, p_site, p_url, p_instance)
        ON CONFLICT (id) DO UPDATE SET name = EXCLUDED.name, site = EXCLUDED.site, url = EXCLUDED.url,
            instance = EXCLUDED.instance;
    UPDATE camera SET recorder = p_id WHERE recorder = former.id;
    RETURN 0;
END $$)",
    "REVOKE EXECUTE ON FUNCTION join_recorder(uuid, text, text, text, uuid, bigint) FROM PUBLIC",
    "GRANT EXECUTE ON FUNCTION join_recorder(uuid, text, text, text, uuid, bigint) TO panedeck_recorder",
};

/// Where a camera's last recorder fails too, one that has rested from it for a minute is asked again, however
/// long it was to rest.
constexpr const char* GiveBack[] = {
    R"(
CREATE VIEW rested AS SELECT camera.id AS camera, recorder.id AS recorder, failure.rests_until - interval '1 minute' *
        2 ^ least(failure.times - 1, 4) AS since
    FROM failure JOIN camera ON camera.id = failure.camera JOIN recorder ON recorder.id = failure.recorder
    WHERE camera.enabled AND (camera.recorder IS NULL OR camera.recorder = recorder.id) AND (camera.site = '' OR
        camera.site = recorder.site) AND recorder.well AND recorder.alive_until > clock_timestamp() AND
        failure.rests_until - interval '1 minute' * (2 ^ least(failure.times - 1, 4) - 1) < clock_timestamp())",
    "GRANT SELECT ON rested TO panedeck_viewer",
    R"(
CREATE OR REPLACE FUNCTION give_back(p_recorder uuid, p_cameras text[]) RETURNS SETOF text LANGUAGE sql AS $$
    WITH other AS (
        SELECT lease.camera, EXISTS (SELECT 1 FROM able WHERE able.camera = lease.camera AND
                able.recorder <> p_recorder) AS is_able,
            (SELECT able.recorder FROM able WHERE able.camera = lease.camera AND able.recorder = lease.previous
                AND able.recorder <> p_recorder) AS previous,
            (SELECT rested.recorder FROM rested WHERE rested.camera = lease.camera AND
                rested.recorder <> p_recorder ORDER BY since LIMIT 1) AS rested
        FROM lease WHERE lease.recorder = p_recorder AND lease.camera = ANY(p_cameras)),
    gone AS (
        UPDATE lease SET previous = NULL, offered = false, ready = false, taken = clock_timestamp(),
            recorder = CASE WHEN other.is_able THEN other.previous ELSE other.rested END FROM other
        WHERE lease.camera = other.camera AND lease.recorder = p_recorder AND
            (other.is_able OR other.rested IS NOT NULL)
        RETURNING lease.camera)
    INSERT INTO failure (camera, recorder, rests_until)
        SELECT camera, p_recorder, clock_timestamp() + interval '1 minute' FROM gone
        ON CONFLICT (camera, recorder) DO UPDATE SET
            times = CASE WHEN failure.rests_until < clock_timestamp() - interval '1 hour' THEN 1
                         ELSE failure.times + 1 END,
            rests_until = clock_timestamp() + interval '1 minute' *
                CASE WHEN failure.rests_until < clock_timestamp() - interval '1 hour' THEN 1
                     ELSE 2 ^ least(failure.times, 4) END
        RETURNING camera $$)",
    "UPDATE schema_version SET version = 5",
};

/// A mark carries the transaction that made it or changed it last: a desk that has seen all up to some of
/// them finds the others, however late what they tell of came here.
constexpr const char* Marks[] = {
    "ALTER TABLE span ADD changed_in bigint NOT NULL DEFAULT 0",
    "CREATE INDEX span_changed ON span (camera, changed_in)",
    R"(
CREATE FUNCTION date_mark() RETURNS trigger LANGUAGE plpgsql AS $$
BEGIN
    NEW.changed_in := pg_current_xact_id()::text::bigint;
    RETURN NEW;
END $$)",
    "CREATE TRIGGER span_new BEFORE INSERT ON span FOR EACH ROW EXECUTE FUNCTION date_mark()",
    "CREATE TRIGGER span_other BEFORE UPDATE ON span FOR EACH ROW WHEN (OLD.* IS DISTINCT FROM NEW.*) "
    "EXECUTE "
    "FUNCTION date_mark()",
};

} // namespace

bool makeFifth(FleetDatabase& database)
{
    return database.runAll(Join) && database.runAll(Marks) && database.runAll(GiveBack);
}
