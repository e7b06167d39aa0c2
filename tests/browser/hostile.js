// SPDX-License-Identifier: MIT
// An agent's reply with each text in it replaced by one that is meant to do harm. It knows no procedure: on the wire a
// text is its length and its bytes, filled up to four with zeros, which hardly anything else looks like.
import { connect, createServer } from 'node:net';

export const markup = [
  '<img src=x onerror="window.hacked=1">',
  '"><script>window.hacked=1</script>',
  "' onmouseover='window.hacked=1' x='",
  '\u202Elive\u2066 \u05D0\u05D1 {{ 7 * 7 }} ${window.hacked=1}',
  Buffer.from('\xff\xfe\xc0\x80\xed\xa0\x80 not UTF-8', 'latin1'),
  "=HYPERLINK(\"x\")|'!A1",
  '</title></textarea><svg onload=window.hacked=1>',
  '../../%2e%2e/?a=1&b=2#c',
].map((text) => Buffer.from(text));

export const endless = [Buffer.alloc(65536, 'W')];

const header = 24;

function isText(reply, at, length) {
  const padded = (length + 3) & ~3;
  if (length < 2 || length > 255 || at + 4 + padded > reply.length) return false;
  let letters = 0;
  for (let i = at + 4; i < at + 4 + length; i++) {
    if (reply[i] < 0x20 || reply[i] > 0x7e) return false;
    letters += Number((reply[i] | 0x20) >= 0x61 && (reply[i] | 0x20) <= 0x7a);
  }
  for (let i = at + 4 + length; i < at + 4 + padded; i++) if (reply[i] !== 0) return false;
  return letters > 0;
}

export function harmful(reply, texts) {
  const parts = [reply.subarray(0, header)];
  let at = header;
  while (at + 4 <= reply.length) {
    const length = reply.readUInt32BE(at);
    if (!isText(reply, at, length)) {
      parts.push(reply.subarray(at, at + 4));
      at += 4;
      continue;
    }
    // The same text becomes the same harm, so that names stay names.
    const sum = reply.subarray(at + 4, at + 4 + length).reduce((sum, byte) => sum + byte, 0);
    const text = texts[sum % texts.length];
    const written = Buffer.alloc(4 + ((text.length + 3) & ~3));
    written.writeUInt32BE(text.length);
    text.copy(written, 4);
    parts.push(written);
    at += 4 + ((length + 3) & ~3);
  }
  return Buffer.concat(parts);
}

/** Passes calls on to an agent, and its replies back with other texts. */
export async function hostileProxy(port, texts) {
  const sockets = new Set();
  const server = createServer((client) => {
    const agent = connect(port, '127.0.0.1');
    sockets.add(client).add(agent);
    let received = Buffer.alloc(0);
    let record = Buffer.alloc(0);
    client.pipe(agent);
    agent.on('data', (bytes) => {
      received = Buffer.concat([received, bytes]);
      for (;;) {
        if (received.length < 4) return;
        const mark = received.readUInt32BE();
        const length = mark & 0x7fffffff;
        if (received.length < 4 + length) return;
        record = Buffer.concat([record, received.subarray(4, 4 + length)]);
        received = received.subarray(4 + length);
        if (mark >>> 31) {
          const reply = harmful(record, texts);
          const start = Buffer.alloc(4);
          start.writeUInt32BE((0x80000000 | reply.length) >>> 0);
          client.write(Buffer.concat([start, reply]));
          record = Buffer.alloc(0);
        }
      }
    });
    for (const [one, other] of [[client, agent], [agent, client]]) {
      one.on('error', () => other.destroy());
      one.on('close', () => { other.destroy(); sockets.delete(one); });
    }
  }).listen(0, '127.0.0.1');
  await new Promise((done) => server.on('listening', done));
  return {
    port: server.address().port,
    close: () => { sockets.forEach((socket) => socket.destroy()); server.close(); },
  };
}
