// node peer.js HOST PORT USER PASSWORD: npm's package "onvif" against a device; a line for each thing it did.
const onvif = require('onvif');
const [host, port, username, password] = process.argv.slice(2);
const say = (what, value) => console.log(what, JSON.stringify(value));
const fail = (error) => { console.error('FAILED:', error.message || error); process.exit(1); };
process.on('uncaughtException', fail);
setTimeout(() => fail('no end within 30 s'), 30000).unref();

const ask = (cam, name, options) => new Promise((resolve, reject) => {
    const done = (error, value) => error ? reject(new Error(name + ': ' + error.message)) : resolve(value);
    if (options === undefined) cam[name](done); else cam[name](options, done);
});
const probe = () => new Promise((resolve, reject) =>
    onvif.Discovery.probe({timeout: 3000}, (error, cams) => error ? reject(error[0] || error) : resolve(cams)));

async function turn(cam) {
    await ask(cam, 'continuousMove', {x: 0.5, y: 0, zoom: 0});
    await ask(cam, 'stop', {panTilt: true, zoom: true});
    await ask(cam, 'relativeMove', {x: 0.1, y: 0.1, zoom: 0});
    await ask(cam, 'setPreset', {presetName: 'Peer'});
    const presets = await ask(cam, 'getPresets', {});
    say('presets', presets);
    const first = Object.values(presets)[0];
    await ask(cam, 'gotoPreset', {preset: first.$ ? first.$.token : first});
}

async function run() {
    say('discovered', (await probe()).map((cam) => cam.hostname + ':' + cam.port));
    const cam = await new Promise((resolve, reject) => {
        const made = new onvif.Cam({hostname: host, port, username, password, autoconnect: false, timeout: 8000}, () => {});
        made.connect((error) => error ? reject(error) : resolve(made));
    });
    say('time', await ask(cam, 'getSystemDateAndTime'));
    say('information', await ask(cam, 'getDeviceInformation'));
    say('scopes', await ask(cam, 'getScopes'));
    say('services', (await ask(cam, 'getServices', false)).map((service) => service.XAddr));
    say('profiles', cam.profiles.map((profile) => profile.$.token));
    say('stream', await ask(cam, 'getStreamUri', {protocol: 'RTSP'}));
    await turn(cam);
    await new Promise((resolve, reject) => {
        cam.on('eventsError', reject);
        cam.on('event', (message) => { say('event', message.topic._ || message.topic); resolve(); });
    });
    process.exit(0);
}
run().catch(fail);
