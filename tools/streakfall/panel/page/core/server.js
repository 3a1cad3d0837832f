// Requests to the program that serves this page.

/** The program answered, and refused. */
export class Refusal extends Error {
  constructor(status, answer) {
    super(answer.error ?? `HTTP ${status}`);
    this.status = status;
    this.gonePage = answer.gone === true; // the program no longer knows this page
  }
}

/** Nothing answered. */
export class Gone extends Error {}

const base = new URL('api/', document.baseURI);

async function send(method, path, body, signal) {
  const options = { method, signal, cache: 'no-store' };
  if (body !== undefined) {
    options.body = JSON.stringify(body);
    options.headers = { 'Content-Type': 'application/json' };
  }
  let response;
  try {
    response = await fetch(new URL(path, base), options);
  } catch (error) {
    throw error.name === 'AbortError' ? error : new Gone(error.message);
  }
  if (!response.ok) throw new Refusal(response.status, await response.json().catch(() => ({})));
  return response;
}

async function read(promise) {
  try {
    return await promise;
  } catch (error) {
    throw error.name === 'AbortError' ? error : new Gone(error.message);
  }
}

/** The answer as an object. */
export async function ask(method, path, body) {
  const response = await send(method, path, body);
  return read(response.json());
}

/**
 * A picture: its head {width, height, frame, divisor, effectMs, ...} with `pixels`, straight RGBA
 * of 8 bits.
 */
export async function askPicture(path, body, signal) {
  const response = await send('POST', path, body, signal);
  const bytes = await read(response.arrayBuffer());
  const headBytes = Number(response.headers.get('X-Head-Bytes'));
  const head = JSON.parse(new TextDecoder().decode(new Uint8Array(bytes, 0, headBytes)));
  const pixels = new Uint8ClampedArray(bytes, headBytes, head.width * head.height * 4);
  return { ...head, pixels };
}
