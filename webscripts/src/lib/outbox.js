// Steps on their way out of the page. The agent asks five times a second, and what it has taken is
// sent once a second: a second answer before then would replace the first. So an answer is given at
// most once in that time.
//
// In one go of the sender a page's steps come before native ones. Whoever has just come over from
// native controls has left steps of those behind, so the page's wait until they have gone.
//
// A page that goes away leaves its steps to the next page of the same origin.

const key = 'tarni.recorded';
// A little more than the agent's sender sleeps.
const pauseBetweenAnswers = 1100;
// Until then the agent has the picture of the touch that a step is about.
const youngestAge = 150;
// As long as native steps may wait for the sender.
const pauseAfterArrival = 1200;
// Steps of a page that was left long ago would come out of order.
const longestStay = 30000;

function storage() {
  try {
    return window.sessionStorage;
  } catch (error) {
    return null; // a page without an origin
  }
}

function restored() {
  const store = storage();
  const kept = store && store.getItem(key);
  if (!kept) return [];
  store.removeItem(key);
  const lines = kept.split('\n');
  const steps = [];
  if (Date.now() - Number(lines[0]) > longestStay) return steps;
  for (let i = 1; i < lines.length; i += 1) {
    steps[steps.length] = { text: lines[i].slice(1), isAlone: lines[i][0] === '1', since: 0 };
  }
  return steps;
}

let waiting = restored();
let lastAnswer = performance.now();
let arrival = -Infinity;

export function arrive() {
  if (isEmpty()) arrival = performance.now();
}

// JSON texts, separated by commas. Those that go alone make an answer of their own.
export function put(text, isAlone = false) {
  waiting[waiting.length] = { text, isAlone, since: performance.now() };
}

export function isEmpty() {
  return waiting.length === 0;
}

function takeOlderThan(age) {
  const now = performance.now();
  let text = '';
  let count = 0;
  for (; count < waiting.length && now - waiting[count].since >= age; count += 1) {
    if (count && (waiting[0].isAlone || waiting[count].isAlone)) break;
    text += (count ? ',' : '') + waiting[count].text;
  }
  if (count === 0) return '';
  const kept = [];
  for (let i = count; i < waiting.length; i += 1) kept[kept.length] = waiting[i];
  waiting = kept;
  lastAnswer = now;
  return `[${text}]`;
}

// The JSON array of all that may go together now; "" when there is none.
export function take() {
  const now = performance.now();
  if (now - lastAnswer < pauseBetweenAnswers || now - arrival < pauseAfterArrival) return '';
  return takeOlderThan(youngestAge);
}

// The same for a native step that is to come after them: the agent has sent all that came before.
export function takeNow() {
  return takeOlderThan(0);
}

export function leaveToNextPage() {
  const store = storage();
  if (!store || isEmpty()) return;
  let kept = String(Date.now());
  for (let i = 0; i < waiting.length; i += 1) {
    kept += `\n${Number(waiting[i].isAlone)}${waiting[i].text}`;
  }
  try {
    store.setItem(key, kept);
    waiting = [];
  } catch (error) {
    // A full store: the steps stay here, for the case that the page comes back.
  }
}
