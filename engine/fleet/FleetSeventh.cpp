#include "fleet/FleetSeventh.h"

#include "fleet/FleetDatabase.h"

namespace {

/// What a recorder is to record: what is its own, and what another one took from it and does not record yet.
constexpr const char* Leased = R"(
CREATE FUNCTION leased(p_recorder uuid) RETURNS TABLE (camera text, name text, description text, ready boolean)
    LANGUAGE sql AS $$
    SELECT camera.id, camera.name, camera.description::text, lease.ready AND lease.recorder = p_recorder
        FROM lease JOIN camera ON camera.id = lease.camera
        WHERE lease.recorder = p_recorder OR (lease.previous = p_recorder AND NOT lease.ready AND
            lease.taken > clock_timestamp() - interval '15 s')
        ORDER BY camera.id $$)";

/// Cameras that a recorder may record, whether or not it can.
constexpr const char* Allowed = R"(
CREATE VIEW allowed AS SELECT camera.id AS camera, recorder.id AS recorder FROM camera JOIN recorder ON
    (camera.recorder IS NULL OR camera.recorder = recorder.id) AND (camera.site = '' OR camera.site = recorder.site)
    WHERE camera.enabled)";

/// What packets come of is recorded here from now on, and no longer where it was.
constexpr const char* TellReady = R"(
CREATE FUNCTION tell_ready(p_recorder uuid, p_cameras text[]) RETURNS void LANGUAGE sql AS $$
    WITH mine AS (
        SELECT camera FROM lease WHERE recorder = p_recorder AND camera = ANY(p_cameras) AND NOT ready
            FOR UPDATE SKIP LOCKED),
    begun AS (
        UPDATE lease SET ready = true, previous = NULL FROM mine WHERE lease.camera = mine.camera
            RETURNING lease.camera)
    UPDATE failure SET rests_until = clock_timestamp() FROM begun
        WHERE failure.camera = begun.camera AND failure.recorder = p_recorder AND rests_until > clock_timestamp() $$)";

/// What is no longer this one's to record goes: switched off, or kept for another.
constexpr const char* LetGo = R"(
CREATE FUNCTION let_go(p_recorder uuid) RETURNS void LANGUAGE sql AS $$
    WITH gone AS (
        SELECT camera FROM lease WHERE recorder = p_recorder AND NOT EXISTS (SELECT 1 FROM allowed
            WHERE allowed.camera = lease.camera AND allowed.recorder = p_recorder) FOR UPDATE SKIP LOCKED)
    UPDATE lease SET recorder = NULL, previous = NULL, offered = false, ready = false FROM gone
        WHERE lease.camera = gone.camera $$)";

/// Of two that take at once each gets what the other has not locked. What nobody can record goes to anybody
/// who may: somebody is to try. Who records a camera till now, or comes back in this moment and did, goes on
/// until it is ready here.
constexpr const char* Take = R"(
CREATE FUNCTION take_leases(p_recorder uuid, p_count integer, p_offered boolean) RETURNS void LANGUAGE sql AS $$
    WITH free AS (
        SELECT lease.camera, former.id AS running FROM lease
            JOIN allowed ON allowed.camera = lease.camera AND allowed.recorder = p_recorder
            LEFT JOIN recorder former ON former.id = lease.recorder
            WHERE lease.recorder IS DISTINCT FROM p_recorder AND (former.id IS NULL OR
                former.alive_until < clock_timestamp() OR (lease.offered AND p_offered)) AND
                (EXISTS (SELECT 1 FROM able WHERE able.camera = lease.camera AND able.recorder = p_recorder) OR
                NOT EXISTS (SELECT 1 FROM able WHERE able.camera = lease.camera))
            ORDER BY lease.camera LIMIT p_count FOR UPDATE OF lease SKIP LOCKED)
    UPDATE lease SET recorder = p_recorder, taken = clock_timestamp(), offered = false, ready = false,
        previous = free.running FROM free WHERE lease.camera = free.camera $$)";

/// Offered are so many, and no more, those first that another one may take. What another one is taking in
/// this moment is left to it.
constexpr const char* Offer = R"(
CREATE FUNCTION offer_leases(p_recorder uuid, p_count integer) RETURNS void LANGUAGE sql AS $$
    WITH mine AS (SELECT camera FROM lease WHERE recorder = p_recorder FOR UPDATE SKIP LOCKED),
    ranked AS (
        SELECT camera, row_number() OVER (ORDER BY EXISTS (SELECT 1 FROM able WHERE able.camera = mine.camera AND
            able.recorder <> p_recorder) DESC, camera DESC) <= p_count AS wanted FROM mine)
    UPDATE lease SET offered = ranked.wanted FROM ranked
        WHERE lease.camera = ranked.camera AND lease.offered <> ranked.wanted $$)";

/// All that a recorder does about its leases once a second, in one round trip. A camera is shared by those
/// who can record it; one share is the sum over the cameras, rounded up. What is still free when a recorder
/// has its share nobody else can take. Null where another program has its number. The cameras come only if
/// they are others than those of the digest that the recorder knows.
constexpr const char* Hold = R"(
CREATE FUNCTION hold_leases(p_recorder uuid, p_instance uuid, p_well boolean, p_stalled jsonb, p_playing jsonb,
    p_known text) RETURNS jsonb LANGUAGE plpgsql AS $$
DECLARE
    held integer;
    fair integer;
    given jsonb;
    cameras jsonb;
    digest text;
BEGIN
    UPDATE recorder SET alive_until = clock_timestamp() + interval '10 s', well = p_well
        WHERE id = p_recorder AND instance = p_instance;
    IF NOT FOUND THEN
        RETURN NULL;
    END IF;
    PERFORM tell_ready(p_recorder, ARRAY(SELECT jsonb_array_elements_text(p_playing)));
    IF p_stalled <> '[]' THEN
        SELECT jsonb_agg(one) INTO given FROM give_back(p_recorder, ARRAY(SELECT jsonb_array_elements_text(p_stalled))) one;
    END IF;
    PERFORM let_go(p_recorder);
    SELECT (SELECT count(*) FROM lease WHERE recorder = p_recorder), coalesce(ceil(sum(1.0 / others)), 0) INTO held, fair
        FROM (SELECT count(*) AS others FROM able GROUP BY camera HAVING bool_or(recorder = p_recorder)) mine;
    PERFORM take_leases(p_recorder, CASE WHEN held < fair THEN fair - held END, held < fair);
    PERFORM offer_leases(p_recorder, greatest(held - fair, 0));
    SELECT coalesce(jsonb_agg(jsonb_build_array(camera, name, description, ready)), '[]') INTO cameras
        FROM leased(p_recorder);
    digest := hashtextextended(cameras::text, 0)::text;
    RETURN jsonb_build_object('given', coalesce(given, '[]'), 'digest', digest, 'cameras',
        CASE WHEN digest <> p_known THEN cameras END);
END $$)";

/// Of several programs with one recorder's number, who has seen another one (p_silent is not negative) asks
/// until when that one lives or has lived, and 1 if it has left; it takes the place only if that is what it
/// says itself. A program of an earlier version has no instance.
constexpr const char* Join = R"(
CREATE OR REPLACE FUNCTION join_recorder(p_id uuid, p_name text, p_site text, p_url text, p_instance uuid,
    p_silent bigint) RETURNS bigint LANGUAGE plpgsql SECURITY DEFINER SET search_path FROM CURRENT AS $$
DECLARE
    former recorder;
    other bigint;
BEGIN
    PERFORM pg_advisory_xact_lock(hashtext('panedeck recorder'));
    SELECT CASE WHEN isfinite(alive_until) THEN extract(epoch FROM alive_until) * 1000000 ELSE 1 END INTO other
        FROM recorder WHERE id = p_id AND instance IS DISTINCT FROM p_instance AND
            (p_silent >= 0 OR alive_until > clock_timestamp());
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
END $$)";

constexpr const char* All[] = {Leased, Allowed, TellReady, LetGo, Take, Offer, Hold, Join};

constexpr const char* Rights[] = {
    "GRANT SELECT ON allowed TO panedeck_viewer",
    "REVOKE EXECUTE ON FUNCTION leased, tell_ready, let_go, take_leases, offer_leases, hold_leases FROM "
    "PUBLIC",
    "GRANT EXECUTE ON FUNCTION leased, tell_ready, let_go, take_leases, offer_leases, hold_leases TO "
    "panedeck_recorder",
    "UPDATE schema_version SET version = 7",
};

} // namespace

bool makeSeventh(FleetDatabase& database)
{
    return database.runAll(All) && database.runAll(Rights);
}
