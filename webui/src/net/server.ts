// What the page asks of the tool that serves it, and what that tells by itself.
import type { WrittenLocator } from '../model/locators';
import type { Step } from '../model/steps';

export interface Rect {
  x: number;
  y: number;
  width: number;
  height: number;
}

// As docs/session.md describes elements.
export interface Description {
  element: number;
  class: string;
  rect: Rect;
  visible: boolean;
  text?: string;
  title?: string;
  identifier?: string;
  label?: string;
  value?: string;
  hint?: string;
  placeholder?: string;
  enabled?: boolean;
  focused?: boolean;
  editable?: boolean;
  secure?: boolean;
  checked?: boolean;
  selected?: boolean;
  expanded?: boolean;
  modal?: boolean;
  popup?: boolean;
  parent?: number;
  index?: number;
  page?: number;
  [member: string]: unknown;
}

export interface WindowDescription extends Description {
  screenRect: Rect;
  key: boolean;
  takesInput: boolean;
}

export interface RunningProgram {
  name: string;
  pid: number;
  command: string;
  hasSession: boolean;
}

export type ProgramState = 'none' | 'starting' | 'running' | 'busy' | 'ended';

export interface ProgramEvent {
  type: 'program';
  state: ProgramState;
  name: string;
  pid: number;
  command: string;
  words: string[]; // of the same
  toolkit: string;
  agent: string; // its version
  hasInput: boolean;
  canStart: boolean;
  isRecording: boolean;
  why: string;
}

export interface TreeEvent {
  type: 'tree';
  version: number;
  whole: boolean;
  elements: Description[];
  gone?: number[];
  windows: WindowDescription[];
}

export interface PictureEvent {
  type: 'picture';
  window: number;
  format: string;
  data: string;
  width: number;
  height: number;
  scale: number;
}

export interface CostsEvent {
  type: 'costs';
  at: number; // seconds, of the tool's clock
  busyMs: number | null;
  longestMs: number | null;
  beganWith: string | null;
  cpuMs: number;
  memoryBytes: number | null;
}

export interface StepEvent {
  type: 'step';
  step: { act: string; [member: string]: unknown };
}

export type ServerEvent = ProgramEvent | TreeEvent | PictureEvent | CostsEvent | StepEvent;

// An answer that is an error; `name` as docs/session.md lists them.
export class CallError extends Error {
  constructor(
    readonly kind: string,
    sentence: string,
  ) {
    super(sentence);
  }
}

async function request<Answer>(path: string, body?: unknown): Promise<Answer> {
  const options: RequestInit = body
    ? {
        method: 'POST',
        headers: { 'Content-Type': 'application/json' },
        body: JSON.stringify(body),
      }
    : {};
  let response: Response;
  try {
    response = await fetch(path, options);
  } catch {
    throw new CallError('no server', 'tarni inspect has ended');
  }
  const answer = await response.json();
  if (answer.error) throw new CallError(answer.name ?? 'unknown error', answer.error);
  return answer as Answer;
}

// A method of the program's session channel.
export function call<Answer>(method: string, params: object = {}): Promise<Answer> {
  return request<Answer>('call', { method, params });
}

// The elements that a selector fits, written as the command line takes it.
export function find(selector: string): Promise<{ elements: Description[]; ms: number }> {
  return request('find', { selector });
}

// The ways to find an element, best first, and each as it is written for that program.
export function locatorsOf(element: number, program: string): Promise<{ locators: WrittenLocator[] }> {
  return request('locators', { element, program });
}

export function programs(): Promise<{ programs: RunningProgram[] }> {
  return request('programs');
}

export function inspect(pid: number): Promise<unknown> {
  return request('inspect', { pid });
}

export function startAgain(): Promise<unknown> {
  return request('start', {});
}

// What stands in the program in place of an element that a step looks for.
export interface Candidate {
  element: number;
  class?: string;
  text?: string;
  whyNot: string;
}

export interface Played {
  hasFailed: boolean;
  message: string; // why it failed, or what is worth saying
  locator?: number; // of its element's, that found it
  proposal?: Step; // the step as it had better be
  better?: string; // what is better in it
  candidates?: Candidate[];
}

// `secrets` are the values of what a session names alone.
export function play(step: object, secrets: Record<string, string>): Promise<Played> {
  return request('play', { step, secrets });
}

// The steps of a session file, as the tool reads it. Fails with the line of what is wrong.
export async function openSession(session: string, name: string): Promise<Step[]> {
  return (await request<{ steps: Step[] }>('open', { session, name })).steps;
}

// The test that does what the steps of a session file do.
export async function exportTest(
  session: string,
  language: 'python' | 'javascript',
  name: string,
): Promise<string> {
  return (await request<{ text: string }>('export', { session, language, name })).text;
}

export function record(on: boolean): Promise<unknown> {
  return request('record', { on });
}

// `onLost` is told whether the tool cannot be reached; the browser tries again by itself.
export function listen(
  onEvent: (event: ServerEvent) => void,
  onLost: (isLost: boolean) => void,
): void {
  const events = new EventSource('events');
  events.onmessage = (message) => onEvent(JSON.parse(message.data));
  events.onopen = () => onLost(false);
  events.onerror = () => onLost(true);
}
