// Reads a car's engine speed and coolant temperature through the adapter at a serial device, with a
// client that others have written, and prints one line with both: "1726 rpm, 83 degrees".
'use strict';

const OBDReader = require('obd2-over-serial');

const reader = new OBDReader(process.argv[2], {baudRate: 38400});
const values = new Map();

reader.on('dataReceived', (reply) => {
    if (reply.name)
        values.set(reply.name, reply.value);
    if (!values.has('rpm') || !values.has('temp'))
        return;
    console.log(`${values.get('rpm')} rpm, ${values.get('temp')} degrees`);
    process.exit(0);
});
reader.on('connected', () => {
    reader.addPoller('rpm');
    reader.addPoller('temp');
    reader.startPolling(500);
});
reader.connect();

setTimeout(() => {
    console.error('no answer within 20 s; received: ' + JSON.stringify([...values]));
    process.exit(1);
}, 20000);
